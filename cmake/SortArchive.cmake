# Runs after cpack has packed an archive, which has its files in the order of the file system and with the name of the user who
# built it: packs it again, so that archives of the same sources are the same, whoever builds them.
function(pack_again archive name)
    set(pack [[
        set -eu
        chmod -R u+rw,go-w,go+rX "$1"
        [ -z "${SOURCE_DATE_EPOCH:-}" ] || find "$1" -exec touch --no-dereference "--date=@$SOURCE_DATE_EPOCH" {} +
        case $2 in
            *.zip) find "$1" | LC_ALL=C sort | TZ=UTC zip --quiet -X -9 -@ "$2" ;;
            *) tar --create --sort=name --owner=0 --group=0 --numeric-owner --format=gnu "$1" | gzip --no-name --best >"$2" ;;
        esac
    ]])
    execute_process(COMMAND sh -c "${pack}" sh "${name}" "${archive}" WORKING_DIRECTORY "${archive}.unpacked"
        COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(archive IN LISTS CPACK_PACKAGE_FILES)
    file(REMOVE_RECURSE "${archive}.unpacked")
    file(MAKE_DIRECTORY "${archive}.unpacked")
    file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${archive}.unpacked")
    file(REMOVE "${archive}")
    pack_again("${archive}" "${CPACK_PACKAGE_FILE_NAME}")
    file(REMOVE_RECURSE "${archive}.unpacked")
endforeach()
