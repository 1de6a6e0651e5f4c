// The shared library exports the public API and nothing else: exports.txt has every name, and tells how it is updated.
#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/ChildProcess.h"

using namespace Quorvex::Velmora::TestSupport;
using testing::IsEmpty;
using testing::Not;

namespace
{

using Names = std::set<std::string>;

// The first word of every line that is no comment.
Names namesIn(std::istream& stream)
{
    Names names;
    for (std::string line; std::getline(stream, line);) {
        const std::string name = line.substr(0, line.find(' '));
        if (!name.empty() && name.front() != '#')
            names.insert(name);
    }
    return names;
}

Names exportedNames()
{
    const ChildResult result =
        run({VELMORA_NM, {"--dynamic", "--defined-only", "--format=posix", VELMORA_LIBRARY_FILE}});
    EXPECT_TRUE(result.exitedWith(0)) << result.description();
    std::istringstream output(result.output);
    return namesIn(output);
}

Names approvedNames()
{
    std::ifstream file(VELMORA_EXPORTS_FILE);
    return namesIn(file);
}

Names without(const Names& names, const Names& others)
{
    Names left;
    std::set_difference(names.begin(), names.end(), others.begin(), others.end(), std::inserter(left, left.end()));
    return left;
}

} // namespace

TEST(ExportTable, HasNothingThatIsNotApproved)
{
    const Names exported = exportedNames();

    ASSERT_THAT(exported, Not(IsEmpty()));
    EXPECT_THAT(without(exported, approvedNames()), IsEmpty());
}

TEST(ExportTable, HasLostNothing)
{
    const Names approved = approvedNames();

    ASSERT_THAT(approved, Not(IsEmpty()));
    EXPECT_THAT(without(approved, exportedNames()), IsEmpty());
}
