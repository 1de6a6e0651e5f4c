# Runs after cpack has packed an archive, which has its files in the order of the file system and with the name of the user who
# built it: packs it again, so that archives of the same sources are the same, whoever builds them.
find_program(tar NAMES tar REQUIRED)
find_program(gzip NAMES gzip REQUIRED)
set(times)
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    set(times "--mtime=@$ENV{SOURCE_DATE_EPOCH}")
endif()
foreach(archive IN LISTS CPACK_PACKAGE_FILES)
    set(folder "${archive}.unpacked")
    file(REMOVE_RECURSE "${folder}")
    file(MAKE_DIRECTORY "${folder}")
    file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${folder}")
    execute_process(
        COMMAND "${tar}" --create --directory "${folder}" --sort=name --owner=0 --group=0 --numeric-owner
            --mode=go+rX,go-w --format=gnu ${times} "${CPACK_PACKAGE_FILE_NAME}"
        COMMAND "${gzip}" --no-name --best
        OUTPUT_FILE "${archive}.part"
        COMMAND_ERROR_IS_FATAL ANY)
    file(RENAME "${archive}.part" "${archive}")
    file(REMOVE_RECURSE "${folder}")
endforeach()
