# Takes from the programs of the package what only a debugger reads. CPack runs it over what it installed and is about to pack.
find_program(strip strip REQUIRED)
file(GLOB programs "${CPACK_TEMPORARY_DIRECTORY}/*/usr/bin/*" "${CPACK_TEMPORARY_DIRECTORY}/*/usr/libexec/tilora/*")
list(LENGTH programs count)
if(NOT count EQUAL 3)
  message(FATAL_ERROR "strip.cmake: the package has three programs, not ${count} in ${CPACK_TEMPORARY_DIRECTORY}: ${programs}")
endif()
execute_process(COMMAND "${strip}" --strip-unneeded --remove-section=.comment --remove-section=.note ${programs} COMMAND_ERROR_IS_FATAL ANY)
