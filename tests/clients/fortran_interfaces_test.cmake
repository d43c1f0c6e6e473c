# The Fortran module binds every name of the export list, nothing else, with as many argument words, and
# by the C prototypes that gfortran makes of it with the types of the header; its blocks have the header's
# layout; and each of its routines is declared __stdcall on 32-bit Windows.
#   cmake -DFORTRAN=gfortran -DCC=cc -DSOURCE=folder -DFOLDER=scratch -P fortran_interfaces_test.cmake
cmake_policy(VERSION 3.25)
set(BLOCKS
    element_row TARVANE_ELEMENT_ROW
    en_record TARVANE_EN_RECORD
    failure_row TARVANE_FAILURE_ROW
    shell_results TARVANE_SHELL_RESULTS
    external_results TARVANE_EXTERNAL_RESULTS
    mdmt_results TARVANE_MDMT_RESULTS
    flange_results TARVANE_FLANGE_RESULTS
    foundation_head TARVANE_FOUNDATION_HEAD
    foundation_horizontal "__typeof__(((TARVANE_FOUNDATION_RECORDS*)0)->horizontal)"
    foundation_vertical "__typeof__(((TARVANE_FOUNDATION_RECORDS*)0)->vertical)"
    foundations TARVANE_FOUNDATION_RECORDS
    host_input TARVANE_HOST_INPUT
    host_services TARVANE_HOST_SERVICES
    material_class_row TARVANE_MATERIAL_CLASS_ROW
    material_record TARVANE_MATERIAL_RECORD)

# Members of flange_results are capitals and small letters in the header, which Fortran does not distinguish:
# four have names of their own.
set(ALIASES load_hd Hd load_ht Ht load_hg HG hub_f F)
file(READ ${SOURCE}/include/tarvane/results.h header)
string(REGEX MATCH "typedef struct {.*} TARVANE_FLANGE_RESULTS" header "${header}")
string(REGEX REPLACE "/[*][^*]*[*]/" "" header "${header}")
string(REGEX MATCHALL "[A-Za-z_][A-Za-z0-9_]*" header_words "${header}")
list(REMOVE_DUPLICATES header_words)
set(header_words_lower "${header_words}")
list(TRANSFORM header_words_lower TOLOWER)
function(name_in_header member result)
    list(FIND ALIASES ${member} at)
    if(NOT at EQUAL -1)
        math(EXPR at "${at} + 1")
        list(GET ALIASES ${at} name)
    elseif(member MATCHES "^(hd|ht|hg|f)$")
        set(name ${member})
    else()
        list(FIND header_words_lower ${member} at)
        list(GET header_words ${at} name)
    endif()
    set(${result} ${name} PARENT_SCOPE)
endfunction()

file(MAKE_DIRECTORY ${FOLDER})
execute_process(COMMAND ${FORTRAN} -fc-prototypes -fsyntax-only -J ${FOLDER}
                        ${SOURCE}/fortran/tarvane.f90
                OUTPUT_VARIABLE made COMMAND_ERROR_IS_FATAL ANY)
# Square brackets and semicolons would make and break up lists.
string(REPLACE "[" "<open>" made "${made}")
string(REPLACE "]" "<close>" made "${made}")
string(REPLACE ";" "<end>" made "${made}")

set(wrong "")
set(code "#include \"tarvane/tarvane.h\"\n#include <stddef.h>\n")

# ---- blocks --------------------------------------------------------------------------------------------
string(APPEND code "#define SAME_SIZE(ours, theirs) _Static_assert(sizeof(ours) == sizeof(theirs), #ours);\n"
    "#define SAME_PLACE(ours, theirs, m, n) _Static_assert(offsetof(ours, m) == offsetof(theirs, n) && \\\n"
    "    sizeof(((ours*)0)->m) == sizeof(((theirs*)0)->n), #ours \".\" #m);\n"
    "#define SAME_TYPE(ours, theirs, m, n) _Static_assert(__builtin_types_compatible_p( \\\n"
    "    __typeof__(((ours*)0)->m), __typeof__(((theirs*)0)->n)), #ours \".\" #m);\n")
string(REGEX MATCHALL "typedef struct [a-z_]+ {[^}]*} [a-z_]+<end>" types "${made}")
set(names "")
foreach(type ${types})
    string(REGEX REPLACE "^typedef struct ([a-z_]+) .*" "\\1" name "${type}")
    list(APPEND names ${name})
    list(FIND BLOCKS ${name} at)
    if(at EQUAL -1)
        list(APPEND wrong "the block ${name} is not the header's")
        continue()
    endif()
    math(EXPR at "${at} + 1")
    list(GET BLOCKS ${at} theirs)
    string(APPEND code "${type}\nSAME_SIZE(${name}, ${theirs})\n")
    string(REGEX MATCHALL "\n    [a-z_]+ [^\n]+<end>" members "${type}")
    foreach(member ${members})
        string(REGEX MATCH "\n    ([a-z_]+) [(]?[*]?([a-z0-9_]+)" found "${member}")
        set(member_name ${CMAKE_MATCH_2})
        if(name STREQUAL "flange_results")
            name_in_header(${member_name} in_header)
        else()
            set(in_header ${member_name})
        endif()
        string(APPEND code "SAME_PLACE(${name}, ${theirs}, ${member_name}, ${in_header})\n")
        # Tables of two rows are flat in the prototypes.
        if(member_name MATCHES "^(stress|allowed|ratio|exceeded)$" AND name STREQUAL "flange_results")
            string(APPEND code "SAME_TYPE(${name}, ${theirs}, ${member_name}<open>0<close>, "
                               "${in_header}<open>0<close><open>0<close>)\n")
        elseif(member MATCHES "^\n    (float|int) [a-z]")
            string(APPEND code "SAME_TYPE(${name}, ${theirs}, ${member_name}, ${in_header})\n")
        endif()
    endforeach()
endforeach()
list(LENGTH BLOCKS count)
foreach(at RANGE 0 ${count} 2)
    if(at LESS count)
        list(GET BLOCKS ${at} name)
        math(EXPR at "${at} + 1")
        list(GET BLOCKS ${at} theirs)
        if(NOT name IN_LIST names)
            list(APPEND wrong "there is no block ${name}")
        endif()
        string(APPEND code "#define ${name} ${theirs}\n")
    endif()
endforeach()

# ---- routines and variables ----------------------------------------------------------------------------
file(STRINGS ${SOURCE}/engine/frame/exports/exports.def.inc lines REGEX "^TARVANE_(ROUTINE|VARIABLE)\\(")
file(STRINGS ${SOURCE}/fortran/win32/stdcall.inc stdcall REGEX "^ *!GCC")
list(TRANSFORM stdcall REPLACE "^ *!GCC\\$ ATTRIBUTES STDCALL :: ([a-z0-9_]+)$" "\\1")
set(routines 0)
set(variables 0)
foreach(line ${lines})
    if(line MATCHES "^TARVANE_ROUTINE\\(([A-Za-z0-9_]+), *([0-9]+), *[0-9]+\\)")
        math(EXPR routines "${routines} + 1")
        set(name ${CMAKE_MATCH_1})
        set(listed ${CMAKE_MATCH_2})
        string(TOLOWER ${name} lower)
        if(NOT lower IN_LIST stdcall)
            list(APPEND wrong "${name} is not in stdcall.inc")
        endif()
        list(REMOVE_ITEM stdcall ${lower})
        if(NOT made MATCHES "\n([a-z]+ [*]?)${name} [(]([^\n]*)[)]<end>")
            list(APPEND wrong "${name} has no interface")
            continue()
        endif()
        set(gives "${CMAKE_MATCH_1}")
        set(arguments "${CMAKE_MATCH_2}")
        string(REGEX MATCHALL "[^,]+" words "${arguments}")
        list(LENGTH words words)
        if(NOT words EQUAL listed)
            list(APPEND wrong "${name} has ${words} words in place of ${listed}")
        endif()
        # An address has no type in Fortran; of two of them gfortran shows one.
        if(gives STREQUAL "void *")
            string(APPEND code "const void *got_${name}(void) { return ${name}()<end> }\n")
        else()
            if(name STREQUAL "SET_HOST_WINDOW")
                string(REPLACE "const void *" "void *const *" arguments "${arguments}")
            endif()
            string(APPEND code "${gives}${name}(${arguments})<end>\n")
        endif()
    elseif(line MATCHES "^TARVANE_VARIABLE\\(([A-Za-z0-9_]+)\\)")
        math(EXPR variables "${variables} + 1")
        set(name ${CMAKE_MATCH_1})
        if(made MATCHES "\nextern int ${name}<end>")
            string(APPEND code "extern int ${name}<end>\n")
        else()
            list(APPEND wrong "${name} is not bound")
        endif()
    endif()
endforeach()
if(routines EQUAL 0 OR variables EQUAL 0)
    message(FATAL_ERROR "no names in the export list")
endif()
string(REGEX MATCHALL "\n[a-z]+ [*]?[A-Z0-9_]+ [(]" bound "${made}")
list(LENGTH bound bound)
string(REGEX MATCHALL "\nextern [a-z]+ [A-Za-z]" bound_variables "${made}")
list(LENGTH bound_variables bound_variables)
if(NOT bound EQUAL routines OR NOT bound_variables EQUAL variables)
    list(APPEND wrong "bound are ${bound} routines and ${bound_variables} variables")
endif()
if(stdcall)
    list(APPEND wrong "stdcall.inc names what is not listed: ${stdcall}")
endif()
if(wrong)
    list(JOIN wrong "\n  " wrong)
    message(FATAL_ERROR "the Fortran module:\n  ${wrong}")
endif()

string(REPLACE "<open>" "[" code "${code}")
string(REPLACE "<close>" "]" code "${code}")
string(REPLACE "<end>" ";" code "${code}")
file(WRITE ${FOLDER}/prototypes.c "${code}")
execute_process(COMMAND ${CC} -std=gnu11 -fsyntax-only -Werror -I ${SOURCE}/include
                        ${FOLDER}/prototypes.c
                COMMAND_ERROR_IS_FATAL ANY)
message(STATUS "${routines} routines, ${variables} variables and the blocks as in the header")
