# cmake -D "COMMAND=program;argument;..." -D FOLDER=folder -D EXPECTED=file -P compare_output.cmake: runs a program in a
# folder and compares what it prints, and its result unless that is 0, with a file.
execute_process(
  COMMAND ${COMMAND}
  WORKING_DIRECTORY ${FOLDER}
  OUTPUT_VARIABLE printed
  ERROR_VARIABLE printed
  RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  string(APPEND printed "result ${result}\n")
endif()
file(READ ${EXPECTED} expected)
if(NOT printed STREQUAL expected)
  message(FATAL_ERROR "the output differs from ${EXPECTED}:\n${printed}")
endif()
