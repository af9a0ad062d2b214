#include "text/VelmoDspStringArray.h"

#include <gmock/gmock.h>

#include <sstream>

#include "support/MessageOf.h"

namespace velmodsp {
namespace {

std::vector<std::string> Contents(const StringArray& array) {
    std::vector<std::string> strings;
    for (unsigned long i = 0; i < array.Size(); ++i) strings.push_back(array[i].Str());
    return strings;
}

TEST(StringArray, SplitsAtWholeSeparators) {
    const struct {
        const char *text, *separator;
        std::vector<std::string> pieces;
    } rows[] = {
        {"a,b,c", ",", {"a", "b", "c"}}, {",a", ",", {"", "a"}}, {"a,,b", ",", {"a", "", "b"}},
        {"a,b,", ",", {"a", "b"}},       {"", ",", {""}},        {",", ",", {""}},
        {",,", ",", {"", ""}},           {"abc", "", {"abc"}},   {"a--b-c", "--", {"a", "b-c"}},
        {"A,b", "a", {"A,b"}},
    };
    for (const auto& row : rows) {
        StringArray pieces;
        pieces.PushBack("from before");
        StringArray::SplitString(pieces, row.text, row.separator);
        EXPECT_EQ(Contents(pieces), row.pieces) << row.text << " at " << row.separator;
    }
}

TEST(StringArray, SplitsItsOwnElementsAndStreams) {
    StringArray array;
    array.PushBack("a b,c");
    array.PushBack(",");
    EXPECT_EQ(&array.SplitString(array[0].C_Str(), array[1]), &array);
    EXPECT_EQ(Contents(array), (std::vector<std::string>{"a b", "c"}));
    std::ostringstream stream;
    stream << "x=" << 1;
    EXPECT_EQ(Contents(array.SplitString(stream, "=")), (std::vector<std::string>{"x", "1"}));
}

TEST(StringArray, GrowsWithEmptyStringsAndReportsGrowthThatFails) {
    StringArray array;
    array.PushBack("kept");
    array.Resize(2);
#ifndef _WIN32  // where sizes have 32 bits, and a large machine has room for it
    EXPECT_THAT(MessageOf([&] { array.Resize(~0ul); }),
                testing::HasSubstr(" occured in velmodsp::StringArray::Resize(unsigned long)"));
#endif
    EXPECT_EQ(Contents(array), (std::vector<std::string>{"kept", ""}));
}

}  // namespace
}  // namespace velmodsp
