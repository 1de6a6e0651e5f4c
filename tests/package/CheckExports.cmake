# Compares the names in the export table of a Windows DLL with the approved list, or writes that list.
#   OBJDUMP   the compiler's objdump    LIBRARY   the DLL
#   EXPORTS   the list                  UPDATE    if set, writes the list
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND "${OBJDUMP}" --private-headers "${LIBRARY}" OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table.*" table "${headers}")
# The table ends with an empty line; other sections follow.
string(REGEX REPLACE "\n\r?\n.*" "" table "${table}")
string(REGEX MATCHALL "\n[ \t]*\\[ *[0-9]+\\] [^\n]+" rows "${table}")
list(TRANSFORM rows REPLACE "^\n[ \t]*\\[ *[0-9]+\\] (\\+base\\[ *[0-9]+\\] +[0-9a-f]+ )?" "")
list(SORT rows)
if(UPDATE)
    list(JOIN rows "\n" names)
    file(WRITE "${EXPORTS}"
"# The names that VelmoraTessaport.dll exports when it is built by mingw-w64, one on each line. After an intended
# change of the API, run
#   cmake --build <build tree> --target velmora_update_exports
# and review the difference before you commit it.
${names}
")
    return()
endif()
file(STRINGS "${EXPORTS}" approved)
list(FILTER approved EXCLUDE REGEX "^#")
set(lost ${approved})
list(REMOVE_ITEM lost ${rows})
set(new ${rows})
list(REMOVE_ITEM new ${approved})
list(LENGTH rows count)
if(lost OR new OR count EQUAL 0)
    list(JOIN lost "\n  " lost)
    list(JOIN new "\n  " new)
    message(FATAL_ERROR "${count} names are exported.\nNo longer exported:\n  ${lost}\nNot approved:\n  ${new}")
endif()
message(STATUS "${count} names are exported, all of them approved")
