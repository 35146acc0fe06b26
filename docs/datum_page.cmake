# Fails unless docs/datums.md shows the tables of zellap10/datum/tables.cpp as they are; with -D WRITE=ON, writes it.
set(page "# The datums

A `datum` argument is a number of this table: 117 is WGS-84. Shifts lead to WGS-84, in metres along the axes from the
earth's centre: x towards latitude 0, longitude 0, y towards longitude 90 east, z towards the north pole. A function
that gets any other number answers with NaN.

Names are spelled as in the library, where nothing looks a datum up by its name. The text of `Datum` in a georeference
file chooses none either: the application does, when it wants to shift a position by `datum_to_WGS` or `WGS_to_datum`.
This page is checked against the library's table by a test.

| number | datum | ellipsoid | x | y | z |
|---:|---|---|---:|---:|---:|
")

file(STRINGS ${SOURCE_DIR}/zellap10/datum/tables.cpp lines ENCODING UTF-8)
set(ellipsoids)
set(ellipsoid_rows)
set(count 0)
foreach(line IN LISTS lines)
  if(line MATCHES "^    {[^/]*// *([0-9]+)  ([^ ].*[^ ])  +([0-9.]+)  1/([0-9.]+)$")
    list(APPEND ellipsoids "${CMAKE_MATCH_2}")
    string(APPEND ellipsoid_rows "| ${CMAKE_MATCH_2} | ${CMAKE_MATCH_3} | ${CMAKE_MATCH_4} |\n")
  elseif(line MATCHES "^    {/\\* *([0-9]+) \\*/ \"(.*)\", *([0-9]+), *(-?[0-9]+), *(-?[0-9]+), *(-?[0-9]+)}")
    list(GET ellipsoids ${CMAKE_MATCH_3} ellipsoid)
    string(REPLACE "\\\"" "\"" name "${CMAKE_MATCH_2}")
    string(APPEND page "| ${CMAKE_MATCH_1} | `${name}` | ${ellipsoid} "
                       "| ${CMAKE_MATCH_4} | ${CMAKE_MATCH_5} | ${CMAKE_MATCH_6} |\n")
    math(EXPR count "${count} + 1")
  endif()
endforeach()
if(NOT count EQUAL 120)
  message(FATAL_ERROR "${count} rows of datums were found")
endif()
string(APPEND page "
| ellipsoid | semi-major axis, metres | 1 / flattening |
|---|---:|---:|
${ellipsoid_rows}")

if(WRITE)
  file(WRITE ${SOURCE_DIR}/docs/datums.md "${page}")
endif()
file(READ ${SOURCE_DIR}/docs/datums.md written)
if(NOT written STREQUAL page)
  message(FATAL_ERROR "docs/datums.md differs from the table: cmake -D SOURCE_DIR=. -D WRITE=ON -P docs/datum_page.cmake")
endif()
