# Writes the names that LIBRARY exports to EXPORTS, with the help of NM.
execute_process(
    COMMAND "${NM}" --dynamic --defined-only --format=posix "${LIBRARY}"
    OUTPUT_VARIABLE table
    COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${table}")
list(TRANSFORM lines REPLACE " .*" "")
list(SORT lines)
list(JOIN lines "\n" names)
file(WRITE "${EXPORTS}"
"# The names that the shared library exports on Linux, one on each line. Hosts link against them: a new operation may
# add names, and a removed name breaks installed hosts. After an intended change of the API, run
#   cmake --build <build tree> --target velmora_update_exports
# and review the difference before you commit it.
${names}
")
