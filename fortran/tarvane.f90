! Interfaces of the tarvane engine for Fortran hosts. Every argument goes by reference; a character
! argument is followed by its length by value. Units: inches, pounds, psi, degrees Fahrenheit.
! include/tarvane/tarvane.h tells what each routine does and what its arguments mean.
module tarvane
    use, intrinsic :: iso_c_binding, only: c_char, c_f_pointer, c_float, c_int32_t, c_loc, c_ptr
    implicit none

    integer, parameter :: record_elements = 200, text_length = 435
    integer, parameter :: store_records = 750, store_width = 125

    ! An element of the setup block is an INTEGER (1) or a REAL (from 41 on).
    integer, parameter :: setup_elements = 200, setup_code = 1, setup_print_external = 48

    integer(c_int32_t), bind(c, name="GLOBALS_mp_G_NUSE_CASE2286") :: g_nuse_case2286

    interface
        subroutine reset_engine() bind(c, name="RESET_ENGINE")
        end subroutine
        subroutine set_metric_constants() bind(c, name="SET_METRIC_CONSTANTS")
        end subroutine
        subroutine begin_report() bind(c, name="BEGIN_REPORT")
        end subroutine
        subroutine set_iout(unit) bind(c, name="SET_IOUT")
            import :: c_int32_t
            integer(c_int32_t), intent(in) :: unit
        end subroutine
        subroutine set_iwrite(flag) bind(c, name="SET_IWRITE")
            import :: c_int32_t
            integer(c_int32_t), intent(in) :: flag
        end subroutine
        subroutine set_iwrtfl(flag) bind(c, name="SET_IWRTFL")
            import :: c_int32_t
            integer(c_int32_t), intent(in) :: flag
        end subroutine
        subroutine line_count(n) bind(c, name="LINE_COUNT")
            import :: c_int32_t
            integer(c_int32_t), intent(out) :: n
        end subroutine
        function getsetup() result(address) bind(c, name="GETSETUP")
            import :: c_ptr
            type(c_ptr) :: address
        end function
        function getlinescomflg() result(address) bind(c, name="GETLINESCOMFLG")
            import :: c_ptr
            type(c_ptr) :: address
        end function

        subroutine flange_calc(record, text, text_len, report_kernel, write_case, map_nc, &
                               t_req_new_cold, t_req_new, mawp, t_req, quiet_overstress, rigidity, &
                               code, element, bolt_row, joint_e, corroded_rigidity, standard_flange, &
                               p_operating, div2_edition, decimal_comma) bind(c, name="FLANGE_CALC")
            import :: c_char, c_float, c_int32_t
            real(c_float), intent(inout) :: record(*)
            character(kind=c_char), intent(in) :: text(*)
            integer(c_int32_t), value :: text_len
            integer(c_int32_t), intent(in) :: report_kernel, write_case
            real(c_float), intent(out) :: map_nc, t_req_new_cold, t_req_new, mawp, t_req
            integer(c_int32_t), intent(in) :: quiet_overstress
            integer(c_int32_t), intent(inout) :: rigidity
            integer(c_int32_t), intent(in) :: code, element, bolt_row
            real(c_float), intent(in) :: joint_e
            integer(c_int32_t), intent(in) :: corroded_rigidity, standard_flange
            real(c_float), intent(in) :: p_operating
            integer(c_int32_t), intent(in) :: div2_edition, decimal_comma
        end subroutine

        subroutine shlint(p, sa, s, e, element, d, t, c, k, l, r, alpha, spare13, spare14, cf, d2, &
                          t_req, mawp, map_nc, stress, material, temp, service, t_req_raw, outside, &
                          t_14f, sy, mawp_14f, map_nc_14f, status_14f, sy_cold, ut, skip14f, d1, dd2, &
                          edge1, edge2, pitch, opening_material, corroded_k, name, name_len) &
            bind(c, name="SHLINT")
            import :: c_char, c_float, c_int32_t
            real(c_float), intent(in) :: p, sa, s, e
            integer(c_int32_t), intent(in) :: element
            real(c_float), intent(in) :: d, t, c, k
            real(c_float), intent(inout) :: l
            real(c_float), intent(in) :: r, alpha, spare13, spare14, cf, d2
            real(c_float), intent(out) :: t_req, mawp, map_nc, stress
            integer(c_int32_t), intent(in) :: material
            real(c_float), intent(in) :: temp
            integer(c_int32_t), intent(in) :: service
            real(c_float), intent(out) :: t_req_raw
            integer(c_int32_t), intent(in) :: outside
            real(c_float), intent(out) :: t_14f
            real(c_float), intent(in) :: sy
            real(c_float), intent(inout) :: mawp_14f, map_nc_14f
            integer(c_int32_t), intent(inout) :: status_14f
            real(c_float), intent(inout) :: sy_cold
            real(c_float), intent(in) :: ut
            integer(c_int32_t), intent(in) :: skip14f
            real(c_float), intent(in) :: d1, dd2, edge1, edge2, pitch, opening_material
            integer(c_int32_t), intent(in) :: corroded_k
            character(kind=c_char), intent(in) :: name(*)
            integer(c_int32_t), value :: name_len
        end subroutine

        subroutine compute_failure_ca_div1(p, d, e, s, t, k, l, r, alpha, cf, d2, element, fail_ca, &
                                           outside, tk, fail_ca_k, d1, dd2, edge1, edge2, pitch, &
                                           opening_material, service, corroded_k) &
            bind(c, name="COMPUTE_FAILURE_CA_DIV1")
            import :: c_float, c_int32_t
            real(c_float), intent(in) :: p, d, e, s, t, k, l, r, alpha, cf, d2
            integer(c_int32_t), intent(in) :: element
            real(c_float), intent(out) :: fail_ca
            integer(c_int32_t), intent(in) :: outside
            real(c_float), intent(in) :: tk
            real(c_float), intent(out) :: fail_ca_k
            real(c_float), intent(in) :: d1, dd2, edge1, edge2, pitch, opening_material
            integer(c_int32_t), intent(in) :: service, corroded_k
        end subroutine

        subroutine shlext(p, temp, chart, chart_len, element, d, t, c, k, l, alpha, length, maep, tca, &
                          slen, d_o, factor_a, factor_b, print_tables, d_small, cone_length, do_given, &
                          s, ut, fy, material, fha, fail_ca, service) bind(c, name="SHLEXT")
            import :: c_char, c_float, c_int32_t
            real(c_float), intent(in) :: p, temp
            character(kind=c_char), intent(inout) :: chart(*)
            integer(c_int32_t), value :: chart_len
            integer(c_int32_t), intent(in) :: element
            real(c_float), intent(in) :: d, t, c, k, l, alpha, length
            real(c_float), intent(inout) :: maep, tca, slen, d_o, factor_a, factor_b
            integer(c_int32_t), intent(in) :: print_tables
            real(c_float), intent(in) :: d_small, cone_length
            integer(c_int32_t), intent(in) :: do_given
            real(c_float), intent(in) :: s, ut, fy
            integer(c_int32_t), intent(in) :: material
            real(c_float), intent(inout) :: fha, fail_ca
            integer(c_int32_t), intent(in) :: service
        end subroutine
    end interface

contains

    ! The element of the setup block that the engine reads as an INTEGER, and as a REAL.
    subroutine set_setup_integer(element, value)
        integer, intent(in) :: element
        integer(c_int32_t), intent(in) :: value
        integer(c_int32_t), pointer :: setup(:)
        call c_f_pointer(getsetup(), setup, [setup_elements])
        setup(element) = value
    end subroutine

    subroutine set_setup_real(element, value)
        integer, intent(in) :: element
        real(c_float), intent(in) :: value
        real(c_float), pointer :: setup(:)
        call c_f_pointer(getsetup(), setup, [setup_elements])
        setup(element) = value
    end subroutine

    ! The report goes to the line store.
    subroutine report_to_store()
        call set_iwrite(1_c_int32_t)
        call set_iwrtfl(1_c_int32_t)
        call set_iout(-1_c_int32_t)
    end subroutine

    ! Line i of the line store, which is shared with the engine, and its six style marks. A record
    ! holds 4 blanks, the line, the marks in two columns each and a NUL.
    subroutine stored_line(i, line, marks)
        integer, intent(in) :: i
        character(len=100), intent(out) :: line
        integer, intent(out), optional :: marks(6)
        character(kind=c_char), pointer :: store(:, :)
        integer :: column, last
        character(len=12) :: numbers

        call c_f_pointer(getlinescomflg(), store, [store_width, store_records])
        last = store_width
        do column = store_width, 1, -1
            if (store(column, i) == achar(0)) last = column
        end do
        line = ' '
        do column = 5, last - 13
            line(column - 4:column - 4) = store(column, i)
        end do
        if (.not. present(marks)) return
        do column = 1, 12
            numbers(column:column) = store(last - 13 + column, i)
        end do
        read (numbers, '(6i2)') marks
    end subroutine

end module tarvane
