# The files after "--" as arrays of bytes in the source file OUTPUT.
set(arrays "")
set(rows "")
set(count 0)
set(files FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE ${last})
    set(file ${CMAKE_ARGV${i}})
    if(file STREQUAL "--")
        set(files TRUE)
        continue()
    elseif(NOT files)
        continue()
    endif()
    cmake_path(GET file FILENAME name)
    file(READ ${file} bytes HEX)
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
    string(APPEND arrays "constexpr unsigned char FILE_${count}[] = {${bytes}0};\n")
    string(APPEND rows "    {\"${name}\", FILE_${count}, sizeof FILE_${count} - 1},\n")
    math(EXPR count "${count} + 1")
endforeach()
if(count EQUAL 0)
    set(rows "    {\"\", nullptr, 0}\n")
endif()
file(WRITE ${OUTPUT} "#include \"serve/assets.h\"

namespace tarvane::app {
namespace {
${arrays}
constexpr AssetBytes FILES[] = {
${rows}};
} // namespace

std::span<const AssetBytes> asset_bytes() { return FILES; }
} // namespace tarvane::app
")
