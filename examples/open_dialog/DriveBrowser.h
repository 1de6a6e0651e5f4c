#pragma once

#include <string>
#include <vector>

#include <windows.h>

#include <velmora/native/QvNativeTessaportAPI.h>

/// A line of the list: a drive, a folder or a file.
struct Entry {
    Quorvex::Velmora::TessaportAPI::Item item;
    /// The name of the drive, or of the item.
    std::wstring name;
};

/// A folder, or the list of drives, and the way to it.
struct Place {
    /// The drive's root and the folders below it; empty for the list of drives.
    std::vector<Entry> trail;
    /// Folders first, each part in the order of its names.
    std::vector<Entry> entries;

    /// The way to it, for display.
    [[nodiscard]] std::wstring location() const;

    /// Finds an entry by name, whatever its case. @return null if no entry has it.
    [[nodiscard]] const Entry* find(const std::wstring& name) const;
};

/// Lists what is at the end of a trail. @throws ApiException as the requests do.
[[nodiscard]] Place openPlace(
    Quorvex::Velmora::TessaportAPI::QvNativeTessaportAPI& tessaport, std::vector<Entry> trail);

/// Syncs a file that is only on the server, which has no local path to open yet.
///
/// @throws ApiException also if the file could not be brought here.
void bringHere(
    Quorvex::Velmora::TessaportAPI::QvNativeTessaportAPI& tessaport, const Quorvex::Velmora::TessaportAPI::Item& file);
