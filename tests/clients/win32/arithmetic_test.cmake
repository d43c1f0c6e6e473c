# The engine for 32-bit Windows calculates by SSE2: of the x87 its code has only what passes results
# of functions on. (The mathematical functions of the runtime are the x87's own.)
#   cmake -DOBJDUMP=objdump -DARCHIVE=libtarvane_engine.a -P arithmetic_test.cmake
execute_process(COMMAND ${OBJDUMP} -d --no-show-raw-insn ${ARCHIVE}
                OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\t(addss|mulss|subss|divss) " sse "${output}")
list(LENGTH sse sse)
if(sse LESS 1000)
    message(FATAL_ERROR "${sse} operations by SSE2 in ${ARCHIVE}")
endif()
string(REGEX MATCHALL "\tf[a-z0-9]+" x87 "${output}")
list(TRANSFORM x87 STRIP)
list(REMOVE_DUPLICATES x87)
# Loads, stores, exchange, sign, zero and one, the control word.
list(FILTER x87 EXCLUDE REGEX "^(fld[sltz1]?|fst[slt]?|fstp[slt]?|fxch|fabs|fchs|fnstcw|fldcw)$")
if(x87)
    message(FATAL_ERROR "x87 arithmetic in ${ARCHIVE}: ${x87}")
endif()
message(STATUS "${sse} operations by SSE2, none by the x87")
