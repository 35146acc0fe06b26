# cmake -D SHOW_CHART=program -D CHARTS=folder -D CHART=name [-D ROUTE=waypoints] -D FIGURES=file -P compare_figures.cmake:
# shows a sample chart and compares what is printed with a file, after which the folder of the pictures is called.
get_filename_component(pictures ${FIGURES} NAME_WE)
execute_process(
  COMMAND ${SHOW_CHART} ${CHART}.chart ${pictures} ${ROUTE}
  WORKING_DIRECTORY ${CHARTS}
  OUTPUT_VARIABLE printed
  ERROR_VARIABLE printed
  RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  string(APPEND printed "result ${result}\n")
endif()
file(READ ${FIGURES} expected)
if(NOT printed STREQUAL expected)
  message(FATAL_ERROR "${FIGURES} says otherwise than show_chart prints:\n${printed}")
endif()
