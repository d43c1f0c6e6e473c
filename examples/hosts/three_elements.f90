! A host in Fortran: one flange, one shell, one element under external pressure. Prints the bits of every
! result, so that hosts in other languages can be compared with it, and the reports.
!   three_elements_fortran [DATA_FOLDER]
program three_elements
    use, intrinsic :: iso_c_binding, only: c_float, c_int32_t, c_null_ptr
    use tarvane
    implicit none

    real(c_float), parameter :: zero = 0.0
    integer(c_int32_t), parameter :: on = 1, off = 0, carbon_steel = 1
    character(len=260) :: folder
    integer :: length

    ! The data files are beside the library, or in the folder that is given.
    call get_command_argument(1, folder, length)
    if (length > 0) call set_system_dir(folder, len_trim(folder))

    ! Each element begins as at load, so that none depends on the one before it.
    call fresh()
    call flange()
    call fresh()
    call shell()
    call fresh()
    call external_pressure()

contains

    subroutine fresh()
        call reset_engine()
        call set_metric_constants()
    end subroutine

    subroutine show(element, name, value)
        character(len=*), intent(in) :: element, name
        real(c_float), intent(in) :: value
        write (*, '(a, 1x, a, 1x, z8.8)') element, name, transfer(value, 1_c_int32_t)
    end subroutine

    subroutine print_report()
        integer(c_int32_t) :: lines
        integer :: i
        character(len=100) :: line
        call line_count(lines)
        do i = 1, lines
            call stored_line(i, line)
            write (*, '(2a)') '|', trim(line)
        end do
    end subroutine

    ! A 12 inch class 150 welding neck flange with a spiral wound gasket, SA-105 and SA-193 B7.
    subroutine flange()
        real(c_float) :: record(record_elements), map_nc, t_req_new_cold, t_req_new, mawp, t_req
        integer(c_int32_t) :: rigidity
        character(len=text_length) :: text
        character(len=12) :: name
        integer :: i

        record = 0.0
        record(at_element) = -1.0                   ! stand-alone form
        record(at_type) = type_integral_weld_neck
        record(at_kind) = kind_analyse
        record(at_p) = 150.0
        record(at_t_design) = 300.0
        record(at_sfo) = 20000.0
        record(at_sfa) = 20000.0
        record(at_t) = 1.19
        record(at_ci) = 0.0625
        record(at_b) = 12.0
        record(at_a_flange) = 19.0
        record(at_fod) = 15.0
        record(at_fid) = 12.0
        record(at_go_gasket) = 14.75
        record(at_gi) = 14.0
        record(at_go_hub) = 0.375
        record(at_g1) = 1.19
        record(at_h) = 3.25
        record(at_sb) = 25000.0
        record(at_sa) = 25000.0
        record(at_c) = 17.0
        record(at_a_bolt) = 0.875
        record(at_threads) = threads_tema
        record(at_bolts) = 12.0
        record(at_m) = 3.0
        record(at_y) = 10000.0
        record(at_sketch) = sketch_1a
        record(at_column) = 2.0
        record(at_tg) = 0.125
        record(at_material_class) = 1.0
        record(at_density) = 0.2836

        text = ' '
        call put_slot(text, slot_material, 'SA-105')
        call put_slot(text, slot_bolt_material, 'SA-193 B7')
        call put_slot(text, slot_description, 'NPS 12 cl. 150')
        call put_slot(text, slot_chart, 'CS-2')
        call put_slot(text, slot_external_loads, 'N')
        call put_slot(text, slot_mating_loads, 'N')
        call put_slot(text, slot_channel_cover, 'N')
        call put_slot(text, slot_use_corrosion, 'Y')
        call put_slot(text, slot_partition, 'N')
        call us_units(record, text)

        call report_to_store()
        rigidity = on
        call flange_calc(record, text, text_length, on, on, map_nc, t_req_new_cold, t_req_new, mawp, &
                         t_req, off, rigidity, code_asme_viii_1, off, off, 1.0_c_float, off, off, &
                         150.0_c_float, off, off)
        call show('flange', 'mawp', mawp)
        call show('flange', 'map_nc', map_nc)
        call show('flange', 't_req', t_req)
        do i = 1, record_elements
            write (name, '(a, i0)') 'record', i
            call show('flange', trim(name), record(i))
        end do
        call print_report()
    end subroutine

    ! A thin torispherical head: Appendix 1-4(f) governs.
    subroutine shell()
        real(c_float), parameter :: p = 50.0, s = 20000.0, e = 1.0, d = 200.0, t = 0.375, c = 0.0625
        real(c_float), parameter :: k = 2.0, r = 12.0, cf = 0.3, temp = 300.0, sy = 33600.0
        real(c_float) :: l, sy_cold, mawp_14f, map_nc_14f, t_req, mawp, map_nc, stress, t_req_raw
        real(c_float) :: t_14f, fail_ca, fail_ca_k
        integer(c_int32_t) :: status

        l = 200.0
        sy_cold = 38000.0
        mawp_14f = 0.0
        map_nc_14f = 0.0
        status = 0
        call shlint(p, s, s, e, torispherical_head, d, t, c, k, l, r, zero, c_null_ptr, c_null_ptr, cf, zero, &
                    t_req, mawp, map_nc, stress, carbon_steel, temp, off, t_req_raw, off, t_14f, sy, &
                    mawp_14f, map_nc_14f, status, sy_cold, zero, off, zero, zero, zero, zero, zero, zero, off, '', 0)
        call compute_failure_ca_div1(p, d, e, s, t, k, l, r, zero, cf, zero, torispherical_head, fail_ca, &
                                     off, zero, fail_ca_k, zero, zero, zero, zero, zero, zero, off, off)
        call show('shell', 't_req', t_req)
        call show('shell', 't_req_raw', t_req_raw)
        call show('shell', 'mawp', mawp)
        call show('shell', 'map_nc', map_nc)
        call show('shell', 'stress', stress)
        call show('shell', 't_14f', t_14f)
        call show('shell', 'fail_ca', fail_ca)
    end subroutine

    ! A cylinder under vacuum by Code Case 2286.
    subroutine external_pressure()
        real(c_float), parameter :: p = 15.0, temp = 300.0, d = 90.0, t = 1.125, c = 0.125, k = 2.0
        real(c_float), parameter :: length = 636.0, s = 20000.0, fy = 33600.0
        real(c_float) :: maep, tca, slen, d_o, factor_a, factor_b, fha, fail_ca
        character(len=12) :: chart

        chart = 'CS-2'
        call set_setup_integer(setup_code, code_asme_viii_1)
        call set_setup_real(setup_print_external, 1.0_c_float)
        g_nuse_case2286 = 1
        call begin_report()
        call report_to_store()
        tca = t
        call shlext(p, temp, chart, 12_c_int32_t, cylinder, d, t, c, k, zero, zero, length, maep, tca, &
                    slen, d_o, factor_a, factor_b, on, zero, zero, off, s, zero, fy, carbon_steel, fha, &
                    fail_ca, off)
        call show('external', 'maep', maep)
        call show('external', 'tca', tca)
        call show('external', 'slen', slen)
        call show('external', 'Do', d_o)
        call show('external', 'Fha', fha)
        call show('external', 'fail_ca', fail_ca)
        call print_report()
    end subroutine

end program three_elements
