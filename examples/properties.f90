! A host in Fortran. The module of interfaces is include/tessarel/tessarel.f90, compiled with the host.
program properties
  use, intrinsic :: iso_c_binding, only: c_size_t
  use tessarel
  implicit none
  integer, parameter :: n = 3
  character(len=32) :: names(n) = [character(len=32) :: 'methane', 'ethane', 'propane']
  double precision :: z(n) = [0.9d0, 0.07d0, 0.03d0]
  double precision :: t, p, v, u, h, s, q, cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt
  double precision :: x(n), y(n), lnphi(n)
  character(len=128) :: err
  double precision :: t_bubble, t_dew
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

  ! The routines of routines.h take the length of a text as an argument and stay in K and Pa.
  call tessarel_calc_bubble_t(20d5, y, t_bubble, err, len(err, kind=c_size_t))
  if (err /= 'No errors') call fail(err)
  call tessarel_calc_dew_t(20d5, x, t_dew, err, len(err, kind=c_size_t))
  if (err /= 'No errors') call fail(err)
  print '(a, f8.3, a, f8.3, a)', 'At 20 bar it boils at', t_bubble, ' K and condenses at', t_dew, ' K'

contains

  subroutine fail(message)
    character(len=*), intent(in) :: message
    print '(a)', trim(message)
    stop 1
  end subroutine

end program
