! The module against Fortran's own functions and the C functions beside it: one procedure of each shape and type, the
! choice among accuracies, and what the procedures add to the C functions.
program fortran_test
  use kelvm
  use, intrinsic :: iso_c_binding
  use, intrinsic :: iso_fortran_env, only: real32, real64, error_unit
  implicit none
  integer, parameter :: n = 37
  real(real32) :: a(n), b(n), s(n), t(n)
  real(real64) :: x(n), y(n), u(n), v(n), w(3 * n)
  complex(real32) :: p(n), q(n), r(n)
  complex(real64) :: f(n), g(n), h(n)
  integer :: i, status, failures = 0

  x = [(0.1_real64 + 0.25_real64 * i, i = 1, n)]
  y = [(3 - 0.125_real64 * i, i = 1, n)]
  a = real(x, real32)
  b = real(y, real32)
  f = cmplx(x, y, real64)
  g = cmplx(1 + y, -x, real64)
  p = cmplx(a, b)
  q = cmplx(1 + b, -a)

  ! Each shape and type.
  call kelvm_exp(a, s)
  call check("exp 32f", maxval(abs(s / exp(a) - 1)) < 1e-6)
  call kelvm_exp(x, u)
  call check("exp 64f", maxval(abs(u / exp(x) - 1)) < 1e-15)
  call kelvm_exp(p, r)
  call check("exp 32fc", maxval(abs(r / exp(p) - 1)) < 1e-5)
  call kelvm_exp(f, h)
  call check("exp 64fc", maxval(abs(h / exp(f) - 1)) < 1e-14)
  call kelvm_atan2(b, a, s)
  call check("atan2 32f", maxval(abs(s - atan2(b, a))) < 1e-6)
  call kelvm_sub(x, y, u)
  call check("sub 64f", all(u == x - y))
  call kelvm_div(p, q, r)
  call check("div 32fc", maxval(abs(r * q / p - 1)) < 1e-5)
  call kelvm_mulbyconj(f, g, h)
  call check("mulbyconj 64fc", maxval(abs(h / (f * conjg(g)) - 1)) < 1e-14)
  call kelvm_pow(a, 2.5_real32, s)
  call check("pow 32f", maxval(abs(s / a**2.5_real32 - 1)) < 1e-5)
  call kelvm_pow(x, 2.5_real64, u)
  call check("pow 64f", maxval(abs(u / x**2.5_real64 - 1)) < 1e-14)
  call kelvm_pow(x, y, u)
  call check("pow 64f of arrays", maxval(abs(u / x**y - 1)) < 1e-14)
  call kelvm_pow(p, (2.0_real32, -1.0_real32), r)
  call check("pow 32fc", maxval(abs(r / p**(2.0_real32, -1.0_real32) - 1)) < 1e-4)
  call kelvm_pow(f, (2.0_real64, -1.0_real64), h)
  call check("pow 64fc", maxval(abs(h / f**(2.0_real64, -1.0_real64) - 1)) < 1e-13)
  call kelvm_modf(b, s, t)
  call check("modf 32f", all(s == aint(b) .and. t == b - aint(b)))
  call kelvm_sincos(x, u, v)
  call check("sincos 64f", maxval(abs(u - sin(x))) < 1e-15 .and. maxval(abs(v - cos(x))) < 1e-15)
  call kelvm_cis(a, r)
  call check("cis 32fc", maxval(abs(r - cmplx(cos(a), sin(a)))) < 1e-6)
  call kelvm_cis(x, h)
  call check("cis 64fc", maxval(abs(h - cmplx(cos(x), sin(x), real64))) < 1e-15)
  call kelvm_abs(p, s)
  call check("abs 32fc", maxval(abs(s / abs(p) - 1)) < 1e-6)
  call kelvm_abs(f, u)
  call check("abs 64fc", maxval(abs(u / abs(f) - 1)) < 1e-15)

  ! bits: the least accurate function that has them.
  call kelvm_ln(x, u, bits=27)
  status = kelsLn_64f_A50(x, v, n)
  call check("the C function", status == 0 .and. all(u == v))
  call kelvm_ln(x, u, bits=1)
  status = kelsLn_64f_A26(x, v, n)
  call check("the least accurate", status == 0 .and. all(u == v))
  call kelvm_ln(x, u, bits=60)
  status = kelsLn_64f_A53(x, v, n)
  call check("the most accurate", status == 0 .and. all(u == v))

  ! Every third element, in place, sizes, nothing.
  w = 0
  w(1::3) = x
  call kelvm_cbrt(x, v)
  call kelvm_cbrt(w(1::3))
  call check("in place, with a stride", all(w(1::3) == v) .and. all(w(2::3) == 0))
  call kelvm_pow(f, (3.0_real64, 0.0_real64), h)
  call kelvm_pow(f, (3.0_real64, 0.0_real64))
  call check("power in place", all(f == h))
  v = -1
  call kelvm_sqrt(x(2:), v, status)
  call check("sizes that differ", status == kelStatusSizeError .and. all(v == -1))
  call kelvm_sqrt(v, u, status)
  call check("a warning", status == kelStatusDomain .and. all(u /= u))
  call kelvm_sqrt(x(1:0), v(1:0), status)
  call check("nothing", status == kelStatusOk)
  call check("the loaded build", version_is_known())
  if (failures > 0) error stop 1

contains
  subroutine check(what, good)
    character(*), intent(in) :: what
    logical, intent(in) :: good
    if (good) return
    write (error_unit, '(2a)') "FAILED: ", what
    failures = failures + 1
  end subroutine

  logical function version_is_known()
    type(VersionRecord), pointer :: record
    call c_f_pointer(kelvmGetLibVersion(), record)
    version_is_known = record%versionMajor == 6 .and. any(record%cpuCode(1) // record%cpuCode(2) == ["y8", "v3", "v4"])
  end function
end program
