! Interfaces of the library's entries for Fortran hosts: `use tessarel`, then the calls of tessarel.h with its
! argument lists, where texts carry their lengths by themselves; those of routines.h, from tessarel_calc_p on, take the
! lengths as arguments. Units, texts and shapes are told in these headers, which tools/make_fortran_module.py makes it
! from.
module tessarel
  use, intrinsic :: iso_c_binding, only: c_char, c_double, c_int32_t, c_int64_t, c_size_t
  implicit none
  interface
    subroutine tessarel_setfluid(nf, names, z, err)
      import :: c_double, c_int32_t
      integer(c_int32_t), intent(in) :: nf
      character(len=*), intent(in) :: names(*)
      real(c_double), intent(in) :: z(*)
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_datadir(path, err)
      character(len=*), intent(in) :: path
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_getversion(version)
      import :: c_int32_t
      integer(c_int32_t), intent(inout) :: version
    end subroutine
    subroutine tessarel_fluidinfo(z, molmass, tc, pc, tmin, tmax, molmass_i, tc_i, pc_i, tmin_i, tmax_i)
      import :: c_double
      real(c_double), intent(in) :: z(*)
      real(c_double), intent(inout) :: molmass
      real(c_double), intent(inout) :: tc
      real(c_double), intent(inout) :: pc
      real(c_double), intent(inout) :: tmin
      real(c_double), intent(inout) :: tmax
      real(c_double), intent(inout) :: molmass_i(*)
      real(c_double), intent(inout) :: tc_i(*)
      real(c_double), intent(inout) :: pc_i(*)
      real(c_double), intent(inout) :: tmin_i(*)
      real(c_double), intent(inout) :: tmax_i(*)
    end subroutine
    function tessarel_fluidparameter(name, err)
      import :: c_double
      character(len=*), intent(in) :: name
      character(len=*), intent(inout) :: err
      real(c_double) :: tessarel_fluidparameter
    end function
    subroutine tessarel_sub()
    end subroutine
    subroutine tessarel_tmdprop(spec, order, t, p, v, u, h, s, q, cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt, x, &
        y, lnphi, err)
      import :: c_double, c_int32_t
      character(len=*), intent(in) :: spec
      integer(c_int32_t), intent(in) :: order
      real(c_double), intent(inout) :: t
      real(c_double), intent(inout) :: p
      real(c_double), intent(inout) :: v
      real(c_double), intent(inout) :: u
      real(c_double), intent(inout) :: h
      real(c_double), intent(inout) :: s
      real(c_double), intent(inout) :: q
      real(c_double), intent(inout) :: cv
      real(c_double), intent(inout) :: dpdt
      real(c_double), intent(inout) :: dpdv
      real(c_double), intent(inout) :: d2pdt2
      real(c_double), intent(inout) :: d2pdv2
      real(c_double), intent(inout) :: d2pdtdv
      real(c_double), intent(inout) :: dcvdt
      real(c_double), intent(inout) :: x(*)
      real(c_double), intent(inout) :: y(*)
      real(c_double), intent(inout) :: lnphi(*)
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_tmdprop_allphase(spec, order, t, p, v, u, h, s, q, cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, &
        dcvdt, x, y, lnphi, err)
      import :: c_double, c_int32_t
      character(len=*), intent(in) :: spec
      integer(c_int32_t), intent(in) :: order
      real(c_double), intent(inout) :: t
      real(c_double), intent(inout) :: p
      real(c_double), intent(inout) :: v(*)
      real(c_double), intent(inout) :: u(*)
      real(c_double), intent(inout) :: h(*)
      real(c_double), intent(inout) :: s(*)
      real(c_double), intent(inout) :: q
      real(c_double), intent(inout) :: cv(*)
      real(c_double), intent(inout) :: dpdt(*)
      real(c_double), intent(inout) :: dpdv(*)
      real(c_double), intent(inout) :: d2pdt2(*)
      real(c_double), intent(inout) :: d2pdv2(*)
      real(c_double), intent(inout) :: d2pdtdv(*)
      real(c_double), intent(inout) :: dcvdt(*)
      real(c_double), intent(inout) :: x(*)
      real(c_double), intent(inout) :: y(*)
      real(c_double), intent(inout) :: lnphi(*)
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_tmdpropsat(spec, t, p, v, h, s, u, q, x, y, v_l, v_v, h_l, h_v, s_l, s_v, u_l, u_v, err)
      import :: c_double
      character(len=*), intent(in) :: spec
      real(c_double), intent(inout) :: t
      real(c_double), intent(inout) :: p
      real(c_double), intent(inout) :: v
      real(c_double), intent(inout) :: h
      real(c_double), intent(inout) :: s
      real(c_double), intent(inout) :: u
      real(c_double), intent(inout) :: q
      real(c_double), intent(inout) :: x(*)
      real(c_double), intent(inout) :: y(*)
      real(c_double), intent(inout) :: v_l
      real(c_double), intent(inout) :: v_v
      real(c_double), intent(inout) :: h_l
      real(c_double), intent(inout) :: h_v
      real(c_double), intent(inout) :: s_l
      real(c_double), intent(inout) :: s_v
      real(c_double), intent(inout) :: u_l
      real(c_double), intent(inout) :: u_v
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_capeopenderiv(t, p, v, dv, dh, ds, dg, dlnphi, err)
      import :: c_double
      real(c_double), intent(in) :: t
      real(c_double), intent(in) :: p
      real(c_double), intent(in) :: v
      real(c_double), intent(inout) :: dv(*)
      real(c_double), intent(inout) :: dh(*)
      real(c_double), intent(inout) :: ds(*)
      real(c_double), intent(inout) :: dg(*)
      real(c_double), intent(inout) :: dlnphi(*)
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_criticalpoint(tc, pc, rhoc, err)
      import :: c_double
      real(c_double), intent(inout) :: tc
      real(c_double), intent(inout) :: pc
      real(c_double), intent(inout) :: rhoc
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_phaseenvelope(n, t, p, x, y)
      import :: c_double, c_int32_t
      integer(c_int32_t), intent(inout) :: n
      real(c_double), intent(inout) :: t(*)
      real(c_double), intent(inout) :: p(*)
      real(c_double), intent(inout) :: x(*)
      real(c_double), intent(inout) :: y(*)
    end subroutine
    subroutine tessarel_flash_sensitivity(t, p, beta, v, h, s, dbeta, dv, dh, ds, dx, dy, err)
      import :: c_double
      real(c_double), intent(in) :: t
      real(c_double), intent(in) :: p
      real(c_double), intent(inout) :: beta
      real(c_double), intent(inout) :: v
      real(c_double), intent(inout) :: h
      real(c_double), intent(inout) :: s
      real(c_double), intent(inout) :: dbeta(*)
      real(c_double), intent(inout) :: dv(*)
      real(c_double), intent(inout) :: dh(*)
      real(c_double), intent(inout) :: ds(*)
      real(c_double), intent(inout) :: dx(*)
      real(c_double), intent(inout) :: dy(*)
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_derived(x, t, v, cp, w, jt, kappa, alpha, g, err)
      import :: c_double
      real(c_double), intent(in) :: x(*)
      real(c_double), intent(in) :: t
      real(c_double), intent(in) :: v
      real(c_double), intent(inout) :: cp
      real(c_double), intent(inout) :: w
      real(c_double), intent(inout) :: jt
      real(c_double), intent(inout) :: kappa
      real(c_double), intent(inout) :: alpha
      real(c_double), intent(inout) :: g
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_states(pair, count, a, b, states, liquids, vapours, derived, x, y, codes, text_count, texts, &
        err)
      import :: c_double, c_int32_t, c_int64_t
      character(len=*), intent(in) :: pair
      integer(c_int64_t), intent(in) :: count
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(in) :: b(*)
      real(c_double), intent(inout) :: states(*)
      real(c_double), intent(inout) :: liquids(*)
      real(c_double), intent(inout) :: vapours(*)
      real(c_double), intent(inout) :: derived(*)
      real(c_double), intent(inout) :: x(*)
      real(c_double), intent(inout) :: y(*)
      integer(c_int32_t), intent(inout) :: codes(*)
      integer(c_int32_t), intent(inout) :: text_count
      character(len=*), intent(inout) :: texts(*)
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_getparameter(name, i, value, err)
      import :: c_double, c_int32_t
      character(len=*), intent(in) :: name
      integer(c_int32_t), intent(in) :: i
      real(c_double), intent(inout) :: value
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_setparameter(name, i, value, err)
      import :: c_double, c_int32_t
      character(len=*), intent(in) :: name
      integer(c_int32_t), intent(in) :: i
      real(c_double), intent(in) :: value
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_setkij(i, j, kij, err)
      import :: c_double, c_int32_t
      integer(c_int32_t), intent(in) :: i
      integer(c_int32_t), intent(in) :: j
      real(c_double), intent(in) :: kij
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_prho_mset(m, sigma, epsil, t, p, rho, err)
      import :: c_double
      real(c_double), intent(in) :: m
      real(c_double), intent(in) :: sigma
      real(c_double), intent(in) :: epsil
      real(c_double), intent(in) :: t
      real(c_double), intent(inout) :: p
      real(c_double), intent(inout) :: rho
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_prho_mseekt(m, sigma, epsil, eps, kap, t, p, rho, err)
      import :: c_double
      real(c_double), intent(in) :: m
      real(c_double), intent(in) :: sigma
      real(c_double), intent(in) :: epsil
      real(c_double), intent(in) :: eps
      real(c_double), intent(in) :: kap
      real(c_double), intent(in) :: t
      real(c_double), intent(inout) :: p
      real(c_double), intent(inout) :: rho
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_prho_msemut(m, sigma, epsil, mu, t, p, rho, err)
      import :: c_double
      real(c_double), intent(in) :: m
      real(c_double), intent(in) :: sigma
      real(c_double), intent(in) :: epsil
      real(c_double), intent(in) :: mu
      real(c_double), intent(in) :: t
      real(c_double), intent(inout) :: p
      real(c_double), intent(inout) :: rho
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_xy_kij(kij, p, t, x, y, err)
      import :: c_double
      real(c_double), intent(in) :: kij
      real(c_double), intent(in) :: p
      real(c_double), intent(in) :: t
      real(c_double), intent(inout) :: x(*)
      real(c_double), intent(inout) :: y(*)
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_p_kij(kij, t, q, p, err)
      import :: c_double
      real(c_double), intent(in) :: kij
      real(c_double), intent(in) :: t
      real(c_double), intent(in) :: q
      real(c_double), intent(inout) :: p
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_t_kij(kij, p, q, t, err)
      import :: c_double
      real(c_double), intent(in) :: kij
      real(c_double), intent(in) :: p
      real(c_double), intent(in) :: q
      real(c_double), intent(inout) :: t
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_hsxy_mp(t, p, par, h, s, x, y, err)
      import :: c_double
      real(c_double), intent(in) :: t
      real(c_double), intent(in) :: p
      real(c_double), intent(in) :: par(*)
      real(c_double), intent(inout) :: h
      real(c_double), intent(inout) :: s
      real(c_double), intent(inout) :: x(*)
      real(c_double), intent(inout) :: y(*)
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_session_new(session, err)
      import :: c_int64_t
      integer(c_int64_t), intent(inout) :: session
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_session_use(session, err)
      import :: c_int64_t
      integer(c_int64_t), intent(in) :: session
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_session_free(session, err)
      import :: c_int64_t
      integer(c_int64_t), intent(in) :: session
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_session_current(session)
      import :: c_int64_t
      integer(c_int64_t), intent(inout) :: session
    end subroutine
    subroutine tessarel_session_clone(from, to, err)
      import :: c_int64_t
      integer(c_int64_t), intent(in) :: from
      integer(c_int64_t), intent(inout) :: to
      character(len=*), intent(inout) :: err
    end subroutine
    subroutine tessarel_calc_p(t, v, p) bind(C)
      import :: c_double
      real(c_double), intent(in) :: t
      real(c_double), intent(in) :: v
      real(c_double), intent(inout) :: p
    end subroutine
    subroutine tessarel_calc_v(t, p, phase, v, errormsg, errormsg_len) bind(C)
      import :: c_char, c_double, c_int32_t, c_size_t
      real(c_double), intent(in) :: t
      real(c_double), intent(in) :: p
      integer(c_int32_t), intent(in) :: phase
      real(c_double), intent(inout) :: v
      character(kind=c_char), intent(inout) :: errormsg(*)
      integer(c_size_t), value :: errormsg_len
    end subroutine
    subroutine tessarel_calc_hsu(t, p, v, h, s, u, errormsg, errormsg_len) bind(C)
      import :: c_char, c_double, c_size_t
      real(c_double), intent(in) :: t
      real(c_double), intent(in) :: p
      real(c_double), intent(in) :: v
      real(c_double), intent(inout) :: h
      real(c_double), intent(inout) :: s
      real(c_double), intent(inout) :: u
      character(kind=c_char), intent(inout) :: errormsg(*)
      integer(c_size_t), value :: errormsg_len
    end subroutine
    subroutine tessarel_calc_psat(t, psat, err, err_len) bind(C)
      import :: c_char, c_double, c_size_t
      real(c_double), intent(in) :: t
      real(c_double), intent(inout) :: psat
      character(kind=c_char), intent(inout) :: err(*)
      integer(c_size_t), value :: err_len
    end subroutine
    subroutine tessarel_calc_tsat(p, tsat, err, err_len) bind(C)
      import :: c_char, c_double, c_size_t
      real(c_double), intent(in) :: p
      real(c_double), intent(inout) :: tsat
      character(kind=c_char), intent(inout) :: err(*)
      integer(c_size_t), value :: err_len
    end subroutine
    subroutine tessarel_calc_vspin(t, vliq, vvap, err, err_len) bind(C)
      import :: c_char, c_double, c_size_t
      real(c_double), intent(in) :: t
      real(c_double), intent(inout) :: vliq
      real(c_double), intent(inout) :: vvap
      character(kind=c_char), intent(inout) :: err(*)
      integer(c_size_t), value :: err_len
    end subroutine
    subroutine tessarel_calc_pspin(t, pliq, pvap, err, err_len) bind(C)
      import :: c_char, c_double, c_size_t
      real(c_double), intent(in) :: t
      real(c_double), intent(inout) :: pliq
      real(c_double), intent(inout) :: pvap
      character(kind=c_char), intent(inout) :: err(*)
      integer(c_size_t), value :: err_len
    end subroutine
    subroutine tessarel_calc_tspin(p, tliq, tvap, err, err_len) bind(C)
      import :: c_char, c_double, c_size_t
      real(c_double), intent(in) :: p
      real(c_double), intent(inout) :: tliq
      real(c_double), intent(inout) :: tvap
      character(kind=c_char), intent(inout) :: err(*)
      integer(c_size_t), value :: err_len
    end subroutine
    subroutine tessarel_calc_pt_flash(t, p, x, y, beta, errormsg, errormsg_len) bind(C)
      import :: c_char, c_double, c_size_t
      real(c_double), intent(in) :: t
      real(c_double), intent(in) :: p
      real(c_double), intent(inout) :: x(*)
      real(c_double), intent(inout) :: y(*)
      real(c_double), intent(inout) :: beta
      character(kind=c_char), intent(inout) :: errormsg(*)
      integer(c_size_t), value :: errormsg_len
    end subroutine
    subroutine tessarel_calc_phaseenv(n, z, ierr) bind(C)
      import :: c_double, c_int32_t
      integer(c_int32_t), intent(in) :: n
      real(c_double), intent(in) :: z(*)
      integer(c_int32_t), intent(inout) :: ierr
    end subroutine
    subroutine tessarel_calc_bubble_p(t, y, p, errormsg, errormsg_len) bind(C)
      import :: c_char, c_double, c_size_t
      real(c_double), intent(in) :: t
      real(c_double), intent(inout) :: y(*)
      real(c_double), intent(inout) :: p
      character(kind=c_char), intent(inout) :: errormsg(*)
      integer(c_size_t), value :: errormsg_len
    end subroutine
    subroutine tessarel_calc_bubble_t(p, y, t, errormsg, errormsg_len) bind(C)
      import :: c_char, c_double, c_size_t
      real(c_double), intent(in) :: p
      real(c_double), intent(inout) :: y(*)
      real(c_double), intent(inout) :: t
      character(kind=c_char), intent(inout) :: errormsg(*)
      integer(c_size_t), value :: errormsg_len
    end subroutine
    subroutine tessarel_calc_dew_p(t, x, p, errormsg, errormsg_len) bind(C)
      import :: c_char, c_double, c_size_t
      real(c_double), intent(in) :: t
      real(c_double), intent(inout) :: x(*)
      real(c_double), intent(inout) :: p
      character(kind=c_char), intent(inout) :: errormsg(*)
      integer(c_size_t), value :: errormsg_len
    end subroutine
    subroutine tessarel_calc_dew_t(p, x, t, errormsg, errormsg_len) bind(C)
      import :: c_char, c_double, c_size_t
      real(c_double), intent(in) :: p
      real(c_double), intent(inout) :: x(*)
      real(c_double), intent(inout) :: t
      character(kind=c_char), intent(inout) :: errormsg(*)
      integer(c_size_t), value :: errormsg_len
    end subroutine
    subroutine tessarel_calc_prop_q(n, z, beta, given, value, x, y, result, errormsg, given_len, errormsg_len) bind(C)
      import :: c_char, c_double, c_int32_t, c_size_t
      integer(c_int32_t), intent(in) :: n
      real(c_double), intent(in) :: z(*)
      real(c_double), intent(in) :: beta
      character(kind=c_char), intent(in) :: given(*)
      real(c_double), intent(in) :: value
      real(c_double), intent(inout) :: x(*)
      real(c_double), intent(inout) :: y(*)
      real(c_double), intent(inout) :: result
      character(kind=c_char), intent(inout) :: errormsg(*)
      integer(c_size_t), value :: given_len
      integer(c_size_t), value :: errormsg_len
    end subroutine
    subroutine tessarel_getphaseenv(npnt, t, p, x, y) bind(C)
      import :: c_double, c_int32_t
      integer(c_int32_t), intent(inout) :: npnt
      real(c_double), intent(inout) :: t(*)
      real(c_double), intent(inout) :: p(*)
      real(c_double), intent(inout) :: x(*)
      real(c_double), intent(inout) :: y(*)
    end subroutine
    subroutine tessarel_getminima(tbub, pbub, tdew, pdew) bind(C)
      import :: c_double
      real(c_double), intent(inout) :: tbub
      real(c_double), intent(inout) :: pbub
      real(c_double), intent(inout) :: tdew
      real(c_double), intent(inout) :: pdew
    end subroutine
    subroutine tessarel_getmaxima(tmax, p_tmax, pmax, t_pmax) bind(C)
      import :: c_double
      real(c_double), intent(inout) :: tmax
      real(c_double), intent(inout) :: p_tmax
      real(c_double), intent(inout) :: pmax
      real(c_double), intent(inout) :: t_pmax
    end subroutine
    subroutine tessarel_calc_ab_flash(mode, a, b, t, p, v, u, h, s, q, x, y, errormsg, errormsg_len) bind(C)
      import :: c_char, c_double, c_int32_t, c_size_t
      integer(c_int32_t), intent(in) :: mode
      real(c_double), intent(in) :: a
      real(c_double), intent(in) :: b
      real(c_double), intent(inout) :: t
      real(c_double), intent(inout) :: p
      real(c_double), intent(inout) :: v
      real(c_double), intent(inout) :: u
      real(c_double), intent(inout) :: h
      real(c_double), intent(inout) :: s
      real(c_double), intent(inout) :: q
      real(c_double), intent(inout) :: x(*)
      real(c_double), intent(inout) :: y(*)
      character(kind=c_char), intent(inout) :: errormsg(*)
      integer(c_size_t), value :: errormsg_len
    end subroutine
  end interface
end module tessarel
