! The module of fortran/tarvane.f90 for hosts of the 32-bit Windows library, whose routines are __stdcall.
! After the line given in variables.f90:
!   i686-w64-mingw32-gfortran -static fortran/win32/tarvane.f90 host.f90 build/win32/bin/libtarvane.a
module tarvane
    use, intrinsic :: iso_c_binding, only: c_char, c_f_pointer, c_float, c_funptr, c_int32_t, &
                                           c_null_funptr, c_null_ptr, c_ptr
    use tarvane_variables
    implicit none
    include '../blocks.inc'
    include '../record.inc'
    include '../calculation.inc'
    include '../settings.inc'
    include '../host.inc'
    include '../materials.inc'
    include '../shell.inc'
    include '../external.inc'
    include '../toughness.inc'
    include '../standards.inc'
    include '../report.inc'
    include 'stdcall.inc'
contains
    include '../procedures.inc'
end module tarvane
