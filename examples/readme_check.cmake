# Fails if an example in the README differs from its source file.
file(READ ${SOURCE_DIR}/README.md readme)
foreach(name IN ITEMS first_look first_window)
  file(READ ${SOURCE_DIR}/examples/${name}.cpp example)
  string(FIND "${readme}" "```cpp\n${example}```\n" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "README.md differs from examples/${name}.cpp")
  endif()
endforeach()
