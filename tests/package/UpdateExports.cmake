# Writes the names that LIBRARY exports to EXPORTS, with the help of NM. Those that are new there get VERSION.
execute_process(
    COMMAND "${NM}" --dynamic --defined-only --format=posix "${LIBRARY}"
    OUTPUT_VARIABLE table
    COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" names "${table}")
list(TRANSFORM names REPLACE " .*" "")
list(SORT names)
file(STRINGS "${EXPORTS}" known REGEX "^[^#]")
set(lines)
foreach(name IN LISTS names)
    set(line "${known}")
    list(FILTER line INCLUDE REGEX "^${name}( |$)")
    if(NOT line)
        set(line "${name} ${VERSION}")
    endif()
    string(APPEND lines "${line}\n")
endforeach()
file(WRITE "${EXPORTS}"
"# The names that the shared library exports on Linux, one on each line, with the version in which they came if that is not
# 0.1.0. Hosts link against them: a new operation may add names, and a removed name breaks installed hosts. After an
# intended change of the API, run
#   cmake --build <build tree> --target velmora_update_exports
# and review the difference before you commit it.
${lines}")
