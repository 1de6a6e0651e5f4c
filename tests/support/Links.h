// Symbolic links.
#pragma once

#include <filesystem>

namespace Quorvex::Velmora::TestSupport
{

/// A link that goes with the object.
class Link
{
public:
    /// A relative target starts at the link's folder. Throws when the link cannot be made.
    Link(const std::filesystem::path& target, std::filesystem::path link);
    ~Link();
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

private:
    std::filesystem::path link;
};

} // namespace Quorvex::Velmora::TestSupport
