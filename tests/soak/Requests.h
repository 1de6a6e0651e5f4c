/// @file
/// Requests of all kinds on the scripted service, in random order.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "tests/support/ScriptedService.h"

namespace Quorvex::Velmora::Soak
{

/// How often requests of one kind were made.
struct Count {
    std::uint64_t made = 0;
    std::uint64_t failed = 0;
};

/// Records that requests returned: some are kept for later requests, and dropped when others take their place.
class KeptRecords
{
public:
    explicit KeptRecords(std::mt19937_64& random) : random(random) {}

    void keep(const Common::QVBuffer<TessaportAPI::Item>& found);
    void keep(const Common::QVBuffer<TessaportAPI::Command>& found);
    void clear();

    /// A kept record; an empty one if none is kept.
    [[nodiscard]] TessaportAPI::Item item();
    [[nodiscard]] TessaportAPI::Command command();
    [[nodiscard]] Common::QVBuffer<TessaportAPI::Item> items();
    [[nodiscard]] Common::QVBuffer<TessaportAPI::ItemId> ids();
    [[nodiscard]] TessaportAPI::CommandContext context();

private:
    std::mt19937_64& random;
    std::vector<TessaportAPI::Item> keptItems;
    std::vector<TessaportAPI::Command> keptCommands;
};

class Requests
{
public:
    explicit Requests(std::uint64_t seed);

    /// Makes one request; now and then it first changes the script, a connection or the thread.
    void make();

    /// Closes the connections and drops all records, the cached ones included.
    void drop();

    [[nodiscard]] const std::map<std::string, Count>& counts() const noexcept { return made; }
    [[nodiscard]] TestSupport::ScriptedService& service() noexcept { return scripted; }

private:
    void makeOnThisThread();
    void changeScript();
    void failSometimes();
    void askQueue();
    [[nodiscard]] TessaportAPI::QvNativeTessaportAPI& connection();

    std::mt19937_64 random;
    TestSupport::ScriptedService scripted;
    KeptRecords records{random};
    std::vector<std::unique_ptr<TessaportAPI::QvNativeTessaportAPI>> connections;
    std::map<std::string, Count> made;
};

} // namespace Quorvex::Velmora::Soak
