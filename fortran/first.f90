! The exponential of an array, in full precision and in half of it.
program first
  use kelvm
  use, intrinsic :: iso_fortran_env, only: real64
  implicit none
  real(real64) :: x(4) = [0.0_real64, 1.0_real64, -2.5_real64, 1000.0_real64], y(4)
  integer :: status, i

  call kelvm_exp(x, y, status)
  do i = 1, size(x)
    print '("exp(", f6.1, ") = ", g0)', x(i), y(i)
  end do
  if (status == kelStatusOverflow) print '(a)', "kelStatusOverflow: a result is beyond the doubles; all four are there"

  call kelvm_exp(x(1:3), y(1:3), bits=26) ! the fastest function with 26 correct bits
  print '(a, 3(1x, g0))', "26 bits: ", y(1:3)
end program
