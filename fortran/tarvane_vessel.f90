! The vessel library for Fortran hosts: requests by value, verdicts and results by name. include/tarvane/vessel.h
! describes each call; here texts are Fortran's, trailing blanks are cut, and no JSON is to be written or read.
!   gfortran tarvane_vessel.f90 host.f90 -ltarvane_vessel
!
! A value has a path, "flange[0].P", "flange[0].results.mawp"; places of lists count from 0 on. Numbers are of
! real(c_double), in the units of the request. One thread at a time may use a handle or values.
module tarvane_vessel
    use, intrinsic :: iso_c_binding, only: c_associated, c_char, c_double, c_f_pointer, c_funptr, c_int32_t, &
                                           c_int64_t, c_loc, c_null_char, c_null_funptr, c_null_ptr, c_ptr, c_size_t
    implicit none
    private

    integer(c_int32_t), parameter, public :: tarvane_vessel_abi = 1

    ! How a call ended; see last_fault where it is not tarvane_ok.
    integer(c_int32_t), parameter, public :: tarvane_ok = 0, tarvane_faulty = 1, tarvane_engine_stopped = 2
    integer(c_int32_t), parameter, public :: tarvane_no_data = 3, tarvane_internal = 4

    ! What a result has besides verdicts and inputs; to be added.
    integer(c_int32_t), parameter, public :: want_results = 1, want_report = 2, want_drawings = 8

    ! Kinds of a value.
    integer(c_int32_t), parameter, public :: of_nothing = 0, of_null = 1, of_flag = 2, of_number = 3
    integer(c_int32_t), parameter, public :: of_text = 4, of_list = 5, of_object = 6

    public :: open_vessel, close_vessel, library_version, last_fault, calculate, sweep
    public :: new_values, close_values, put, kind_at, number_at, text_at, count_at, name_at

    ! put(values, path, value, status): a number, a text, "30 mm" for one in a unit of its own, or a flag. Without a
    ! status a path that leads nowhere ends the program with its reason.
    interface put
        module procedure put_number, put_text, put_flag
    end interface

    interface
        function c_open(abi, data_folder, vessel) bind(c, name='tarvane_open') result(status)
            import :: c_char, c_int32_t, c_ptr
            integer(c_int32_t), value :: abi
            character(kind=c_char), intent(in) :: data_folder(*)
            type(c_ptr), intent(out) :: vessel
            integer(c_int32_t) :: status
        end function
        subroutine c_close(vessel) bind(c, name='tarvane_close')
            import :: c_ptr
            type(c_ptr), value :: vessel
        end subroutine
        function c_version() bind(c, name='tarvane_version') result(text)
            import :: c_ptr
            type(c_ptr) :: text
        end function
        function c_last_error(vessel) bind(c, name='tarvane_last_error') result(json)
            import :: c_ptr
            type(c_ptr), value :: vessel
            type(c_ptr) :: json
        end function
        function c_calculate(vessel, request, want, result) bind(c, name='tarvane_calculate') result(status)
            import :: c_int32_t, c_ptr
            type(c_ptr), value :: vessel, request
            integer(c_int32_t), value :: want
            type(c_ptr), intent(out) :: result
            integer(c_int32_t) :: status
        end function
        function c_sweep(vessel, request, inputs, outputs, rows, x, y, fault, progress, user, done) &
            bind(c, name='tarvane_sweep') result(status)
            import :: c_double, c_funptr, c_int32_t, c_int64_t, c_ptr
            type(c_ptr), value :: vessel, request
            type(c_ptr), intent(in) :: inputs(*), outputs(*)
            integer(c_int64_t), value :: rows
            real(c_double), intent(in) :: x(*)
            real(c_double), intent(inout) :: y(*)
            integer(c_int32_t), intent(inout) :: fault(*)
            type(c_funptr), value :: progress
            type(c_ptr), value :: user
            integer(c_int64_t), intent(out) :: done
            integer(c_int32_t) :: status
        end function
        function c_values(json) bind(c, name='tarvane_values') result(values)
            import :: c_ptr
            type(c_ptr), value :: json
            type(c_ptr) :: values
        end function
        subroutine c_values_close(values) bind(c, name='tarvane_values_close')
            import :: c_ptr
            type(c_ptr), value :: values
        end subroutine
        function c_put_number(values, path, number) bind(c, name='tarvane_put_number') result(status)
            import :: c_char, c_double, c_int32_t, c_ptr
            type(c_ptr), value :: values
            character(kind=c_char), intent(in) :: path(*)
            real(c_double), value :: number
            integer(c_int32_t) :: status
        end function
        function c_put_text(values, path, text) bind(c, name='tarvane_put_text') result(status)
            import :: c_char, c_int32_t, c_ptr
            type(c_ptr), value :: values
            character(kind=c_char), intent(in) :: path(*), text(*)
            integer(c_int32_t) :: status
        end function
        function c_put_flag(values, path, flag) bind(c, name='tarvane_put_flag') result(status)
            import :: c_char, c_int32_t, c_ptr
            type(c_ptr), value :: values
            character(kind=c_char), intent(in) :: path(*)
            integer(c_int32_t), value :: flag
            integer(c_int32_t) :: status
        end function
        function c_json(values) bind(c, name='tarvane_json') result(json)
            import :: c_ptr
            type(c_ptr), value :: values
            type(c_ptr) :: json
        end function
        function c_kind(values, path) bind(c, name='tarvane_kind') result(kind_of)
            import :: c_char, c_int32_t, c_ptr
            type(c_ptr), value :: values
            character(kind=c_char), intent(in) :: path(*)
            integer(c_int32_t) :: kind_of
        end function
        function c_number(values, path) bind(c, name='tarvane_number') result(number)
            import :: c_char, c_double, c_ptr
            type(c_ptr), value :: values
            character(kind=c_char), intent(in) :: path(*)
            real(c_double) :: number
        end function
        function c_text(values, path) bind(c, name='tarvane_text') result(text)
            import :: c_char, c_ptr
            type(c_ptr), value :: values
            character(kind=c_char), intent(in) :: path(*)
            type(c_ptr) :: text
        end function
        function c_count(values, path) bind(c, name='tarvane_count') result(count_of)
            import :: c_char, c_int64_t, c_ptr
            type(c_ptr), value :: values
            character(kind=c_char), intent(in) :: path(*)
            integer(c_int64_t) :: count_of
        end function
        function c_name(values, path, place) bind(c, name='tarvane_name') result(text)
            import :: c_char, c_int64_t, c_ptr
            type(c_ptr), value :: values
            character(kind=c_char), intent(in) :: path(*)
            integer(c_int64_t), value :: place
            type(c_ptr) :: text
        end function
        function c_length(text) bind(c, name='strlen') result(length)
            import :: c_ptr, c_size_t
            type(c_ptr), value :: text
            integer(c_size_t) :: length
        end function
    end interface

contains

    ! A handle. A blank folder: the library looks for the data files. With tarvane_no_data there is a handle, too.
    subroutine open_vessel(data_folder, vessel, status)
        character(len=*), intent(in) :: data_folder
        type(c_ptr), intent(out) :: vessel
        integer(c_int32_t), intent(out) :: status
        status = c_open(tarvane_vessel_abi, trim(data_folder)//c_null_char, vessel)
    end subroutine

    subroutine close_vessel(vessel)
        type(c_ptr), intent(inout) :: vessel
        call c_close(vessel)
        vessel = c_null_ptr
    end subroutine

    function library_version() result(text)
        character(len=:), allocatable :: text
        text = text_of(c_version())
    end function

    ! The first fault of the latest failed call with a handle; of new_values and put: with c_null_ptr.
    subroutine last_fault(vessel, field, reason)
        type(c_ptr), intent(in) :: vessel
        character(len=:), allocatable, intent(out) :: field, reason
        type(c_ptr) :: faults
        faults = c_values(c_last_error(vessel))
        field = text_at(faults, '[0].path')
        reason = text_at(faults, '[0].reason')
        call c_values_close(faults)
    end subroutine

    ! The result of a request, new values for the caller to close; c_null_ptr unless tarvane_ok.
    subroutine calculate(vessel, request, want, result, status)
        type(c_ptr), intent(in) :: vessel, request
        integer(c_int32_t), intent(in) :: want
        type(c_ptr), intent(out) :: result
        integer(c_int32_t), intent(out) :: status
        type(c_ptr) :: json
        result = c_null_ptr
        status = c_calculate(vessel, c_json(request), want, json)
        if (status == tarvane_ok) result = c_values(json)
    end subroutine

    ! x(input, row) and y(output, row), names blank-padded: a row of the header's arrays is a column here. fault(row)
    ! is 0, or k: the row has the k-th fault.
    subroutine sweep(vessel, request, inputs, outputs, x, y, fault, status)
        type(c_ptr), intent(in) :: vessel, request
        character(len=*), intent(in) :: inputs(:), outputs(:)
        real(c_double), intent(in) :: x(:, :)
        real(c_double), intent(inout) :: y(:, :)
        integer(c_int32_t), intent(inout) :: fault(:)
        integer(c_int32_t), intent(out) :: status
        character(kind=c_char), allocatable, target :: input_texts(:, :), output_texts(:, :)
        type(c_ptr), allocatable :: input_names(:), output_names(:)
        integer(c_int64_t) :: done
        if (size(x, 1) /= size(inputs) .or. size(y, 1) /= size(outputs) .or. size(y, 2) /= size(x, 2) .or. &
            size(fault) /= size(x, 2)) error stop 'sweep: x(inputs, rows), y(outputs, rows), fault(rows) are expected'
        call to_c(inputs, input_texts, input_names)
        call to_c(outputs, output_texts, output_names)
        status = c_sweep(vessel, c_json(request), input_names, output_names, int(size(x, 2), c_int64_t), x, y, &
                         fault, c_null_funptr, c_null_ptr, done)
    end subroutine

    ! Values, none yet, or those of a JSON text; c_null_ptr for what is no JSON.
    function new_values(json) result(values)
        character(len=*), intent(in), optional :: json
        type(c_ptr) :: values
        character(len=:), allocatable, target :: text
        values = c_null_ptr
        if (.not. present(json)) then
            values = c_values(c_null_ptr)
        else
            text = json//c_null_char
            values = c_values(c_loc(text))
        end if
    end function

    subroutine close_values(values)
        type(c_ptr), intent(inout) :: values
        call c_values_close(values)
        values = c_null_ptr
    end subroutine

    subroutine put_number(values, path, number, status)
        type(c_ptr), intent(in) :: values
        character(len=*), intent(in) :: path
        real(c_double), intent(in) :: number
        integer(c_int32_t), intent(out), optional :: status
        call ended(c_put_number(values, trim(path)//c_null_char, number), status)
    end subroutine

    subroutine put_text(values, path, text, status)
        type(c_ptr), intent(in) :: values
        character(len=*), intent(in) :: path, text
        integer(c_int32_t), intent(out), optional :: status
        call ended(c_put_text(values, trim(path)//c_null_char, trim(text)//c_null_char), status)
    end subroutine

    subroutine put_flag(values, path, flag, status)
        type(c_ptr), intent(in) :: values
        character(len=*), intent(in) :: path
        logical, intent(in) :: flag
        integer(c_int32_t), intent(out), optional :: status
        call ended(c_put_flag(values, trim(path)//c_null_char, merge(1_c_int32_t, 0_c_int32_t, flag)), status)
    end subroutine

    function kind_at(values, path) result(kind_of)
        type(c_ptr), intent(in) :: values
        character(len=*), intent(in) :: path
        integer(c_int32_t) :: kind_of
        kind_of = c_kind(values, trim(path)//c_null_char)
    end function

    ! Of a flag 1 or 0; not a number (ieee_is_nan) where there is none.
    function number_at(values, path) result(number)
        type(c_ptr), intent(in) :: values
        character(len=*), intent(in) :: path
        real(c_double) :: number
        number = c_number(values, trim(path)//c_null_char)
    end function

    ! Empty where there is none.
    function text_at(values, path) result(text)
        type(c_ptr), intent(in) :: values
        character(len=*), intent(in) :: path
        character(len=:), allocatable :: text
        text = text_of(c_text(values, trim(path)//c_null_char))
    end function

    function count_at(values, path) result(count_of)
        type(c_ptr), intent(in) :: values
        character(len=*), intent(in) :: path
        integer :: count_of
        count_of = int(c_count(values, trim(path)//c_null_char))
    end function

    ! Of the member of an object, from 0 on; empty where there is none.
    function name_at(values, path, place) result(text)
        type(c_ptr), intent(in) :: values
        character(len=*), intent(in) :: path
        integer, intent(in) :: place
        character(len=:), allocatable :: text
        text = text_of(c_name(values, trim(path)//c_null_char, int(place, c_int64_t)))
    end function

    ! ---- texts of C ----

    function text_of(address) result(text)
        type(c_ptr), intent(in) :: address
        character(len=:), allocatable :: text
        character(kind=c_char), pointer :: characters(:)
        integer :: i, length
        length = 0
        if (c_associated(address)) length = int(c_length(address))
        allocate (character(len=length) :: text)
        if (length == 0) return
        call c_f_pointer(address, characters, [length])
        do i = 1, length
            text(i:i) = characters(i)
        end do
    end function

    ! The names with a NUL each, and their addresses with a null pointer after them.
    subroutine to_c(names, texts, addresses)
        character(len=*), intent(in) :: names(:)
        character(kind=c_char), allocatable, target, intent(out) :: texts(:, :)
        type(c_ptr), allocatable, intent(out) :: addresses(:)
        integer :: i, k
        allocate (texts(len(names) + 1, size(names)), addresses(size(names) + 1))
        texts = c_null_char
        addresses = c_null_ptr
        do i = 1, size(names)
            do k = 1, len_trim(names(i))
                texts(k, i) = names(i) (k:k)
            end do
            addresses(i) = c_loc(texts(1, i))
        end do
    end subroutine

    subroutine ended(how, status)
        integer(c_int32_t), intent(in) :: how
        integer(c_int32_t), intent(out), optional :: status
        character(len=:), allocatable :: field, reason
        if (present(status)) then
            status = how
        else if (how /= tarvane_ok) then
            call last_fault(c_null_ptr, field, reason)
            error stop 'put: '//field//': '//reason
        end if
    end subroutine

end module tarvane_vessel
