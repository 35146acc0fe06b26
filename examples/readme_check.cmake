# Fails unless the README shows the examples word for word as the build compiles them.
file(READ ${SOURCE_DIR}/README.md readme)
foreach(name IN ITEMS first_look first_window)
  file(READ ${SOURCE_DIR}/examples/${name}.cpp example)
  string(FIND "${readme}" "```cpp\n${example}```\n" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "README.md does not show examples/${name}.cpp as it is")
  endif()
endforeach()
