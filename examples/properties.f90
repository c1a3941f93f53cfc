! A host in Fortran: the entries of the library are plain external procedures.
program properties
  implicit none
  integer, parameter :: n = 3
  character(len=32) :: names(n) = [character(len=32) :: 'methane', 'ethane', 'propane']
  double precision :: z(n) = [0.9d0, 0.07d0, 0.03d0]
  double precision :: t, p, v, u, h, s, q, cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt
  double precision :: x(n), y(n), lnphi(n)
  character(len=128) :: err
  external :: tessarel_setfluid, tessarel_tmdprop
  integer :: i

  call tessarel_setfluid(n, names, z, err)
  if (err /= 'No errors') call fail(err)

  u = 0; h = 0; s = 0; q = 0; v = 0
  x = 0; y = 0; lnphi = 0
  print '(a)', 'Natural gas: methane 0.90, ethane 0.07, propane 0.03'
  print '(4a14)', 'T degC', 'p bar', 'h kJ/kg', 'cv kJ/(kg K)'
  do i = 0, 4
    t = 280 + 10 * i   ! K at entry, degrees Celsius at return
    p = 50d5           ! Pa at entry, bar at return
    call tessarel_tmdprop('TP Vph', 1, t, p, v, u, h, s, q, cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt, &
                          x, y, lnphi, err)
    if (err /= 'No errors') call fail(err)
    print '(2f14.3, 2f14.4)', t, p, h, cv
  end do

contains

  subroutine fail(message)
    character(len=*), intent(in) :: message
    print '(a)', trim(message)
    stop 1
  end subroutine

end program
