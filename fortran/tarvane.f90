! Interfaces of the tarvane engine for Fortran hosts. Every argument is passed by reference; a character
! argument is followed by its length by value. Units: inches, pounds, psi, degrees Fahrenheit.
! include/tarvane/tarvane.h describes what each routine does and what its arguments mean. Results are
! INTENT(INOUT): what a routine does not calculate is left as it was.
!   gfortran fortran/tarvane.f90 host.f90 -L build/release/bin -ltarvane
! Hosts for 32-bit Windows take the module of the same name in fortran/win32.
module tarvane
    use, intrinsic :: iso_c_binding, only: c_char, c_f_pointer, c_float, c_funptr, c_int32_t, &
                                           c_null_funptr, c_null_ptr, c_ptr
    implicit none
    include 'variables.inc'
    include 'blocks.inc'
    include 'record.inc'
    include 'calculation.inc'
    include 'settings.inc'
    include 'host.inc'
    include 'materials.inc'
    include 'shell.inc'
    include 'external.inc'
    include 'toughness.inc'
    include 'standards.inc'
    include 'report.inc'
contains
    include 'procedures.inc'
end module tarvane
