# Run by cpack once the files of the package are laid out. cpack strips programs, and leaves static
# libraries with what only a debugger wants.
file(GLOB_RECURSE libraries "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*.a")
foreach(library IN LISTS libraries)
    execute_process(COMMAND strip --strip-debug --enable-deterministic-archives "${library}"
        COMMAND_ERROR_IS_FATAL ANY)
endforeach()
