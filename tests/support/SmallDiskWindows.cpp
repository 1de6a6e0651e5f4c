#include "SmallDisk.h"

#include <cstdlib>
#include <stdexcept>

#include "TemporaryFolder.h"

namespace Quorvex::Velmora::TestSupport
{

// The limit is that of the Linux process in which Wine runs the test.
class SmallDisk::Limit
{
public:
    explicit Limit(std::size_t capacity)
    {
        const char* const limit = std::getenv("VELMORA_WINE_FILE_LIMIT");
        if (limit == nullptr || limit != std::to_string(capacity / 1024))
            throw std::runtime_error(
                "no small disk without VELMORA_WINE_FILE_LIMIT=" + std::to_string(capacity / 1024));
    }

    [[nodiscard]] const TemporaryFolder& folder() const noexcept { return m_folder; }

private:
    TemporaryFolder m_folder;
};

SmallDisk::SmallDisk(std::size_t capacity) : m_limit(std::make_unique<Limit>(capacity))
{
    m_folder = m_limit->folder().path();
}

SmallDisk::~SmallDisk() = default;

std::wstring SmallDisk::file(std::wstring_view name) const { return (m_folder / name).wstring(); }

} // namespace Quorvex::Velmora::TestSupport
