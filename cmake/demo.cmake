# Runs vlnogui without arguments: the banner and the usage line, status 1.
execute_process(COMMAND ${VLNOGUI} RESULT_VARIABLE status)
if(NOT status EQUAL 1)
  message(FATAL_ERROR "vlnogui without arguments should end with status 1, got ${status}")
endif()
