// Symbolic links.
#pragma once

#include <filesystem>

namespace Quorvex::Velmora::TestSupport
{

/// A link that exists during the lifetime of the object.
class Link
{
public:
    /// Resolves a relative target from the folder of the link.
    ///
    /// @throws std::exception if the link cannot be made.
    Link(const std::filesystem::path& target, std::filesystem::path link);
    ~Link();
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

private:
    std::filesystem::path link;
};

} // namespace Quorvex::Velmora::TestSupport
