# Installs the build BUILD into PREFIX, which holds nothing else afterwards.
file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX} COMMAND_ERROR_IS_FATAL ANY)
