! The exported variables, for tarvane.f90 beside this file. A module that declares them would define them
! in its object file too, and the host would have variables of its own. So none is made:
!   i686-w64-mingw32-gfortran -fsyntax-only fortran/win32/variables.f90
! and the linker takes them from the import library. (The attribute DLLIMPORT is refused by gfortran for
! the variables of a module.)
module tarvane_variables
    use, intrinsic :: iso_c_binding, only: c_int32_t
    implicit none
    include '../variables.inc'
end module tarvane_variables
