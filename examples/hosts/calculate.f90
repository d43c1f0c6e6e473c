! A host in Fortran of the vessel library: a flange, its verdict and some of its results, a sweep, and what a fault
! looks like.
!   calculate [DATA_FOLDER]      without a folder the library looks for the data files
program calculate_flange
    use, intrinsic :: iso_c_binding, only: c_double, c_int32_t, c_null_ptr, c_ptr
    use tarvane_vessel
    implicit none

    type(c_ptr) :: vessel, request
    integer(c_int32_t) :: status
    character(len=260) :: folder

    call get_command_argument(1, folder)
    call open_vessel(folder, vessel, status)
    if (status /= tarvane_ok) then
        call failed(c_null_ptr)
        error stop
    end if
    write (*, '(2a)') 'tarvane ', library_version()

    request = new_values()
    call put(request, 'units', 'US')
    call put_flange('flange[0]')
    call calculate_request()
    if (status /= tarvane_ok) error stop
    call sweep_thickness()

    call put(request, 'flange[0].P', 'ten') ! this one is at fault
    call calculate_request()
    if (status /= tarvane_faulty) error stop
    call close_values(request)
    call close_vessel(vessel)

contains

    subroutine put_flange(at)
        character(len=*), intent(in) :: at
        character(len=4), parameter :: keys(*) = [character(len=4) :: 'P', 'T', 'ci', 'B', 'A', 't', 'g0', 'g1', &
                                                  'Sfo', 'Sfa', 'C', 'n', 'a', 'Sb', 'Sa', 'Fod', 'Fid', 'Go', &
                                                  'Gi', 'm', 'y', 'tg']
        real(c_double), parameter :: numbers(size(keys)) = &
            [150.0_c_double, 300.0_c_double, 0.0625_c_double, 12.0_c_double, 19.0_c_double, 1.19_c_double, &
             0.375_c_double, 1.19_c_double, 20000.0_c_double, 20000.0_c_double, 17.0_c_double, 12.0_c_double, &
             0.875_c_double, 25000.0_c_double, 25000.0_c_double, 15.0_c_double, 12.0_c_double, 14.75_c_double, &
             14.0_c_double, 3.0_c_double, 10000.0_c_double, 0.125_c_double]
        integer :: i
        call put(request, at//'.description', 'N1')
        call put(request, at//'.type', 'weld neck')
        call put(request, at//'.bolting', 'TEMA')
        call put(request, at//'.facing', '1a')
        call put(request, at//'.h', '82.55 mm') ! in a unit of its own
        do i = 1, size(keys)
            call put(request, at//'.'//keys(i), numbers(i))
        end do
    end subroutine

    subroutine calculate_request()
        type(c_ptr) :: result
        call calculate(vessel, request, want_results, result, status)
        if (status /= tarvane_ok) then
            call failed(vessel)
            return
        end if
        write (*, '(a)') text_at(result, 'verdict')
        write (*, '(a)') text_at(result, 'flange[0].says')
        call show(result, 'mawp')
        call show(result, 'map_nc')
        call show(result, 't_req')
        write (*, '(2a)') 'rated pressure ', fixed(number_at(result, 'flange[0].rating.pressure'))
        write (*, '(4a)') 'first check ', text_at(result, 'flange[0].checks[0].id'), ', ratio ', &
            fixed(number_at(result, 'flange[0].checks[0].ratio'))
        call close_values(result)
    end subroutine

    subroutine show(result, name)
        type(c_ptr), intent(in) :: result
        character(len=*), intent(in) :: name
        if (kind_at(result, 'flange[0].results.'//name) == of_number) then
            write (*, '(3a)') name, ' ', fixed(number_at(result, 'flange[0].results.'//name))
        else ! a result without a value has a reason
            write (*, '(3a)') name, ': ', text_at(result, 'flange[0].why.'//name)
        end if
    end subroutine

    subroutine sweep_thickness()
        character(len=22), parameter :: inputs(1) = ['flange[0].t'], &
                                        outputs(2) = [character(len=22) :: 'flange[0].results.mawp', 'flange[0].passed']
        real(c_double), parameter :: thickness(1, 3) = &
            reshape([0.75_c_double, 1.0_c_double, 1.19_c_double], [1, 3])
        real(c_double) :: y(2, 3)
        integer(c_int32_t) :: fault(3)
        integer :: row
        call sweep(vessel, request, inputs, outputs, thickness, y, fault, status)
        if (status /= tarvane_ok) error stop
        do row = 1, 3
            write (*, '(6a)') 't ', fixed(thickness(1, row)), ': mawp ', fixed(y(1, row)), ', ', &
                trim(merge('pass   ', 'no pass', y(2, row) > 0.0))
        end do
    end subroutine

    subroutine failed(handle)
        type(c_ptr), intent(in) :: handle
        character(len=:), allocatable :: field, reason
        call last_fault(handle, field, reason)
        write (*, '(4a)') 'fault ', field, ': ', reason
    end subroutine

    ! Three decimals.
    function fixed(number) result(text)
        real(c_double), intent(in) :: number
        character(len=:), allocatable :: text
        character(len=20) :: columns
        write (columns, '(f20.3)') number
        text = trim(adjustl(columns))
    end function

end program calculate_flange
