! The blocks, services and kinds of results of the Fortran module that the host of three elements does not
! use.
!   fortran_host [DATA_FOLDER]
#ifdef TARVANE_WIN32
#define SERVICE(name) !GCC$ ATTRIBUTES STDCALL :: name
#else
#define SERVICE(name)
#endif
module services
    use, intrinsic :: iso_c_binding, only: c_f_pointer, c_int32_t, c_ptr
    implicit none
    integer(c_int32_t) :: stopped = -1
contains
    subroutine note_fatal(user, code) bind(c)
        SERVICE(note_fatal)
        type(c_ptr), value :: user
        integer(c_int32_t), value :: code
        integer(c_int32_t), pointer :: place
        call c_f_pointer(user, place)
        place = code
    end subroutine
    subroutine come_back(user, status) bind(c)
        SERVICE(come_back)
        type(c_ptr), value :: user
        integer(c_int32_t), value :: status
        integer(c_int32_t), pointer :: place
        call c_f_pointer(user, place)
        if (place /= 0) stopped = status
    end subroutine
    subroutine tell_time(user, year, month, day, hour, minute) bind(c)
        SERVICE(tell_time)
        type(c_ptr), value :: user
        integer(c_int32_t), intent(out) :: year, month, day, hour, minute
        integer(c_int32_t), pointer :: place
        call c_f_pointer(user, place)
        year = 2024 + min(place, 0)
        month = 1
        day = 15
        hour = 13
        minute = 30
    end subroutine
end module services

program fortran_host
    use, intrinsic :: iso_c_binding, only: c_float, c_funloc, c_int32_t, c_loc, c_null_ptr
    use tarvane
    use services
    implicit none
    integer :: failures = 0, length
    character(len=260) :: folder

    call get_command_argument(1, folder, length)
    if (length > 0) call set_system_dir(folder, len_trim(folder))
    call reset_engine()
    call set_metric_constants()
    call constants()
    call variables()
    call setup_and_settings()
    call the_services()
    call element_tables()
    call input_record()
    call materials()
    call foundation_files()
    call functions()
    if (failures /= 0) error stop 1
    write (*, '(a)') 'fortran_host: all as expected'

contains

    subroutine check(holds, what)
        logical, intent(in) :: holds
        character(len=*), intent(in) :: what
        if (holds) return
        failures = failures + 1
        write (*, '(2a)') 'not so: ', what
    end subroutine

    subroutine constants()
        call check(transfer(no_temperature, 0_c_int32_t) == int(z'3F814AF5'), 'bits of no_temperature')
        call check(no_value == -no_temperature, 'no_value')
    end subroutine

    ! The routine and the variable reach the same place.
    subroutine variables()
        iinospecial = 3
        lbsarea = 4
        lchord = 5
        g_nmetric_constant = 1
        call set_globals_from_tvn(11, 12, 13, 14, 0, 1, 0)
        call check(g_nuse_tableg == 11, 'g_nuse_tableg')
        call check(g_nuse_corrodedk == 12, 'g_nuse_corrodedk')
        call check(g_nuse_old_div_2 == 13, 'g_nuse_old_div_2')
        call check(g_nuse_case2286 == 14, 'g_nuse_case2286')
        call reset_engine()
        call check(all([iinospecial, lbsarea, lchord, g_nuse_tableg, g_nuse_corrodedk, g_nuse_old_div_2, &
                        g_nuse_case2286, g_nmetric_constant] == 0), 'reset of the variables')
        call set_metric_constants()
    end subroutine

    subroutine setup_and_settings()
        character(len=100) :: line
        integer :: marks(6)
        integer(c_int32_t) :: n
        call begin_report()
        call report_to_store()
        call write_column('Design pressure', 15, 150.0_c_float, as_pressure, [1, 0, 0, 0, 0, 2])
        call line_count(n)
        call check(n == 1, 'one line')
        call stored_line(1, line, marks)
        call check(index(line, 'Design pressure') > 0 .and. index(line, '150.') > 0, 'the line')
        call check(all(marks == [1, 0, 0, 0, 0, 2]), 'its marks')
    end subroutine

    ! A blind flange whose outside diameter is below its inside one is fatal, code 25.
    subroutine the_services()
        integer(c_int32_t), target :: fatal_code
        type(host_services) :: table
        real(c_float) :: record(record_elements), map_nc, t_req_new_cold, t_req_new, mawp, t_req
        integer(c_int32_t) :: rigidity
        character(len=text_length) :: text
        character(len=11) :: date
        character(len=9) :: time

        fatal_code = 0
        table%report_fatal = c_funloc(note_fatal)
        table%stop = c_funloc(come_back)
        table%clock = c_funloc(tell_time)
        table%user = c_loc(fatal_code)
        call set_host_services(table)
        call set_no_dialog(1)
        call report_date(date, len(date), time, len(time))
        call check(date == 'Jan 15,2024', 'date of the service')
        call check(time == '  1:30pm ', 'time of the service')

        record = 0.0
        record(at_element) = -1.0
        record(at_type) = type_blind
        record(at_kind) = kind_analyse
        record(at_p) = 150.0
        record(at_t_design) = 300.0
        record([at_sfo, at_sfa]) = 20000.0
        record(at_t) = 1.19
        record(at_b) = 20.0
        record(at_a_flange) = 19.0
        record(at_fod) = 15.0
        record(at_fid) = 12.0
        record(at_go_gasket) = 14.75
        record(at_gi) = 14.0
        record([at_sb, at_sa]) = 25000.0
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
        record(at_unit_thickness:at_unit_weight) = 1.0
        record(at_unit_temperature_offset) = 0.0
        text = ' '
        call put_slot(text, slot_weight_label, 'pounds of weight') ! to the end of the text and no farther
        call check(text(420:) == ' pounds of weigh', 'a slot cut to the text')
        call put_slot(text, slot_temperature, 'F')
        call check(text(405:407) == ' F ' .and. text(slot_weight_label:) == 'pounds of weigh', 'the other slots')
        rigidity = 0
        mawp = no_value
        call flange_calc(record, text, text_length, 0, 1, map_nc, t_req_new_cold, t_req_new, mawp, t_req, &
                         0, rigidity, 1, 0, 0, 1.0_c_float, 0, 0, 0.0_c_float, 0, 0)
        call check(fatal_code == 25, 'code of a fatal flange')
        call check(stopped == 1, 'stop of the run')
        call set_host_services()
        call reset_engine()
        call set_metric_constants()
    end subroutine

    subroutine element_tables()
        type(element_row), pointer :: rows(:)
        type(failure_row), pointer :: failed(:)
        call element_rows(rows)
        call check(size(rows) == 500, 'element rows')
        call put_text(rows(500)%description, 'A description of more than its field')
        call check(text_of(rows(500)%description) == 'A description of', 'a text cut to its field')
        call put_text(rows(500)%description, 'short')
        call check(text_of(rows(500)%description) == 'short', 'a text padded with blanks')
        call failure_rows(failed)
        call check(size(failed) == 0, 'no failure rows')
    end subroutine

    ! Of the texts of an array of the input record, the second name of the third list.
    subroutine input_record()
        type(host_input), pointer :: input
        real(c_float) :: temperature
        call host_input_record(input)
        call put_text(input%impact_switches, '0001')
        call put_text(input%impact_counts(:, 3), '2')
        call put_text(input%impact_names(:, 1, 3), 'N1')
        call put_text(input%impact_numbers(:, 1, 3), '-10.0')
        call put_text(input%impact_names(:, 2, 3), 'N2')
        call put_text(input%impact_numbers(:, 2, 3), '-20.0')
        call read_impact_table()
        call impact_test_temperature('N2', 2, temperature, 3)
        call check(temperature == -20.0, 'impact test temperature')
        call impact_test_temperature('N2', 2, temperature, 2)
        call check(temperature == 100.0, 'no impact test temperature')
    end subroutine

    subroutine materials()
        type(material_class_row), pointer :: classes(:)
        type(material_record) :: record, again
        integer(c_int32_t) :: count, status
        call set_material_class_names()
        call material_class_rows(classes)
        call check(classes(1)%number == 1 .and. text_of(classes(1)%name) /= ' ', 'material classes')

        call material_count(1, count)
        call check(count > 0, 'material records')
        call material_by_number(1, 1, status, record)
        call check(status == 0 .and. record%tensile > 10.0, 'a material record')
        call read_material(1, text_of(record%name), size(record%name), record%reference, status, again)
        call check(status == 0 .and. text_of(again%name) == text_of(record%name), 'the same by its name')
        call check(read_allowable_at(record, 100.0_c_float) == record%allowable(1), 'allowable stress')
        call check(read_allowable_at(record, 5000.0_c_float) == 0.0, 'no allowable stress')
    end subroutine

    subroutine foundation_files()
        type(foundations), pointer :: records
        call foundation_record_defaults()
        call foundation_data(records)
        call check(text_of(records%vertical%head%application) /= ' ', 'application')
        call check(text_of(records%horizontal%head%length_unit) /= ' ', 'unit of the horizontal record')
    end subroutine

    ! Functions of REAL and of INTEGER.
    subroutine functions()
        real(c_float) :: b
        call check(asmemod(70.0_c_float, 1, 1) > 25.0, 'modulus')
        call check(div2_m_factor(100.0_c_float, 6.5_c_float, 0.5_c_float, 100.0_c_float, 0.0_c_float, &
                                 torispherical_head, 0.0_c_float) > 1.0, 'factor M')
        call check(div2_m_factor(100.0_c_float, 9.0_c_float, 0.5_c_float, 100.0_c_float, 0.0_c_float, &
                                 torispherical_head, 0.0_c_float) == 1.0, 'factor M of a wide knuckle')
        call check(is_main_host() == 0, 'not the host of the suite')
        call check(lis_exempt_ss(1, 'SA-36', 5) == 0, 'no stainless steel')
        b = 0.0
        call factor_b(0.0001_c_float, 29.0_c_float, 0.0005_c_float, 0.1_c_float, 20000.0_c_float, &
                      0.0_c_float, 0.0_c_float, 0.0_c_float, b)
        call check(abs(b - 1450.0) < 1.0, 'stress on the straight line')
    end subroutine

end program fortran_host
