# Finds the native hosting files of .NET in the app host pack of the SDK.
#
#   NetHost::NetHost   headers (nethost.h, hostfxr.h, coreclr_delegates.h) and nethost itself
#   NetHost_VERSION    version of the pack
#
# Set NETHOST_DIR to the folder of the files if they are somewhere else.
if(NOT NETHOST_DIR)
    if(WIN32)
        set(_nethost_rid win-x64)
    elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64")
        set(_nethost_rid linux-arm64)
    else()
        set(_nethost_rid linux-x64)
    endif()
    find_program(DOTNET_EXECUTABLE dotnet DOC "The dotnet command of the .NET SDK")
    if(DOTNET_EXECUTABLE)
        file(REAL_PATH "${DOTNET_EXECUTABLE}" _nethost_dotnet)
        get_filename_component(_nethost_root "${_nethost_dotnet}" DIRECTORY)
        set(_nethost_nuget "$ENV{HOME}/.nuget/packages")
        if(DEFINED ENV{NUGET_PACKAGES})
            file(TO_CMAKE_PATH "$ENV{NUGET_PACKAGES}" _nethost_nuget)
        endif()
        file(GLOB _nethost_packs LIST_DIRECTORIES true
            "${_nethost_root}/packs/Microsoft.NETCore.App.Host.${_nethost_rid}/*"
            "${_nethost_nuget}/microsoft.netcore.app.host.${_nethost_rid}/*")
        list(SORT _nethost_packs COMPARE NATURAL ORDER DESCENDING)
        foreach(_nethost_pack IN LISTS _nethost_packs)
            if(EXISTS "${_nethost_pack}/runtimes/${_nethost_rid}/native/nethost.h")
                set(NETHOST_DIR "${_nethost_pack}/runtimes/${_nethost_rid}/native" CACHE PATH
                    "Folder of nethost.h and the nethost library")
                break()
            endif()
        endforeach()
    endif()
endif()

find_path(NetHost_INCLUDE_DIR nethost.h PATHS "${NETHOST_DIR}" NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
if(WIN32)
    find_file(NetHost_LIBRARY nethost.dll PATHS "${NETHOST_DIR}" NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
else()
    find_library(NetHost_LIBRARY libnethost.a PATHS "${NETHOST_DIR}" NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
endif()
string(REGEX MATCH "/([0-9]+\\.[0-9]+\\.[^/]+)/runtimes/" _nethost_match "${NETHOST_DIR}")
set(NetHost_VERSION "${CMAKE_MATCH_1}")

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(NetHost
    REQUIRED_VARS NetHost_LIBRARY NetHost_INCLUDE_DIR
    VERSION_VAR NetHost_VERSION
    REASON_FAILURE_MESSAGE "Install the .NET SDK, whose packs folder has Microsoft.NETCore.App.Host, or set NETHOST_DIR.")

if(NetHost_FOUND AND NOT TARGET NetHost::NetHost)
    if(WIN32)
        # The DLL is loaded at run time: the static library of the pack is for another linker.
        add_library(NetHost::NetHost INTERFACE IMPORTED GLOBAL)
        set_target_properties(NetHost::NetHost PROPERTIES
            INTERFACE_INCLUDE_DIRECTORIES "${NetHost_INCLUDE_DIR}")
    else()
        add_library(NetHost::NetHost STATIC IMPORTED GLOBAL)
        set_target_properties(NetHost::NetHost PROPERTIES
            IMPORTED_LOCATION "${NetHost_LIBRARY}"
            INTERFACE_INCLUDE_DIRECTORIES "${NetHost_INCLUDE_DIR}"
            INTERFACE_COMPILE_DEFINITIONS NETHOST_USE_AS_STATIC)
    endif()
endif()
mark_as_advanced(NetHost_INCLUDE_DIR NetHost_LIBRARY)
