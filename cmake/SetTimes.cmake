# Runs before cpack packs the files: gives them the time that SOURCE_DATE_EPOCH names, so that packages of the same sources are
# the same, whenever they are built.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(
        COMMAND find "${CPACK_TEMPORARY_DIRECTORY}" -exec touch --no-dereference "--date=@$ENV{SOURCE_DATE_EPOCH}" {} +
        COMMAND_ERROR_IS_FATAL ANY)
endif()
