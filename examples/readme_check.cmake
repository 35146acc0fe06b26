# Fails unless the README shows the example word for word as the build compiles it.
file(READ ${SOURCE_DIR}/README.md readme)
file(READ ${SOURCE_DIR}/examples/first_look.cpp example)
string(FIND "${readme}" "```cpp\n${example}```\n" place)
if(place EQUAL -1)
  message(FATAL_ERROR "README.md does not show examples/first_look.cpp as it is")
endif()
