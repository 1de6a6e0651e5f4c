# Writes the names that LIBRARY exports into EXPORTS, with NM.
execute_process(
    COMMAND "${NM}" --dynamic --defined-only --format=posix "${LIBRARY}"
    OUTPUT_VARIABLE table
    COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${table}")
list(TRANSFORM lines REPLACE " .*" "")
list(SORT lines)
list(JOIN lines "\n" names)
file(WRITE "${EXPORTS}"
"# The names that the shared library exports on Linux, one a line. Hosts are linked against them: a name may be added
# with a new operation, and one that is lost breaks hosts that are installed. After a change of the API that is meant:
#   cmake --build <build tree> --target velmora_update_exports
# and look at the difference before it is committed.
${names}
")
