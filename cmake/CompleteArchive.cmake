# Runs in cpack. `cpack -D VELMORA_DOTNET=<folder>` makes a complete archive: it also has the .NET installation of that folder,
# beside the bridge, where the library looks for one.
if(VELMORA_DOTNET)
    set(CPACK_INSTALLED_DIRECTORIES "${VELMORA_DOTNET};${CPACK_VELMORA_DOTNET_DIR}")
    string(APPEND CPACK_PACKAGE_FILE_NAME "-complete")
endif()
