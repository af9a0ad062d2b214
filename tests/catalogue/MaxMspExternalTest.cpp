#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <sstream>

#include "TeskCatalogue.h"

namespace Tesk {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

using Documentation = std::unique_ptr<MaxMspExternalDocumentation>;
using Query = velmodsp::String (*)(const velmodsp::String&) noexcept;

constexpr Query queries[] = {MaxMspExternalDocumentation::GetClassDigestAsString,
                             MaxMspExternalDocumentation::GetClassDescriptionAsString,
                             MaxMspExternalDocumentation::GetClassSeeAlsoAsString};

// Asked while the program's statics are still being built, as a plug-in's own statics may do.
const MaxMspExternal::Type typeAskedEarly = MaxMspExternal::GetExternal("tesk.fixnan~");

Documentation Create(unsigned int number) {
    return Documentation(MaxMspExternalDocumentation::create(static_cast<MaxMspExternal::Type>(number)));
}

std::string WithoutEmbedded(const std::string& name) { return name.substr(0, name.rfind(".embedded")); }

TEST(MaxMspExternal, Has156NamesFor150NumbersWithoutGaps) {
    EXPECT_EQ(typeAskedEarly, 44u);
    std::set<unsigned int> numbers, embeddedWithOwnNumber;
    int withPrefix = 0, aliases = 0;
    for (const auto& [name, type] : MaxMspExternal::externalMap) {
        numbers.insert(type);
        withPrefix += name.Str().starts_with("tesk.");
        if (!name.Str().ends_with(".embedded")) continue;
        if (type == MaxMspExternal::externalMap.at(WithoutEmbedded(name.Str()).c_str()))
            ++aliases;
        else
            embeddedWithOwnNumber.insert(type);
    }
    EXPECT_EQ(MaxMspExternal::externalMap.size(), 156u);
    EXPECT_EQ(withPrefix, 154);
    EXPECT_EQ(aliases, 6);
    EXPECT_THAT(embeddedWithOwnNumber, testing::ElementsAre(46, 80));
    EXPECT_EQ(numbers.size(), 150u);
    EXPECT_EQ(*numbers.rbegin(), 149u);
}

TEST(MaxMspExternal, EveryNumberHasItsClassButTheTwoEmbeddedOnes) {
    for (unsigned int number = 0; number < 150; ++number) {
        const Documentation documentation = Create(number);
        ASSERT_EQ(documentation == nullptr, number == 46 || number == 80) << number;
        EXPECT_EQ(documentation ? documentation->GetType() : number, number);
    }
    for (unsigned int number : {150u, 151u, 4294967295u}) EXPECT_EQ(Create(number), nullptr) << number;
}

TEST(MaxMspExternal, ClassesAreNamedAfterTheirObjects) {
    const std::pair<std::string, std::string> classesAndNames[] = {
#define TESK_OBJECT(Class, name, digest, description, seeAlso) {#Class, name},
#include "TeskObjects.def"
    };
    EXPECT_EQ(std::size(classesAndNames), 148u);
    for (const auto& [className, name] : classesAndNames) {
        std::string expected;
        for (char c : name.substr(name.starts_with("tesk.") ? 5 : 0))
            if (c != '.') expected += c == '~' ? std::string("tilda") : std::string(1, c);
        velmodsp::String lowerCase(className);
        lowerCase.MakeLowerCase();
        EXPECT_EQ(lowerCase.Str(), expected);
        EXPECT_TRUE(std::isupper(static_cast<unsigned char>(className[0]))) << className;
        EXPECT_EQ(name.ends_with("~"), className.ends_with("Tilda")) << className;
        EXPECT_EQ(name.ends_with(".control"), className.ends_with("Control")) << className;
    }
}

TEST(MaxMspExternal, EveryObjectIsDocumentedInItsOwnWordsAndNamesOthers) {
    std::set<std::string> digests, descriptions;
    for (const auto& [name, type] : MaxMspExternal::externalMap) {
        SCOPED_TRACE(name);
        const Documentation documentation = Create(type);
        if (!documentation) continue;
        const std::string digest = documentation->GetClassDigest().Str();
        const std::string description = documentation->GetClassDescription().Str();
        EXPECT_THAT(digest, EndsWith("."));
        EXPECT_EQ(std::count(digest.begin(), digest.end(), '.'), 1) << "one sentence: " << digest;
        EXPECT_THAT(description, StartsWith(WithoutEmbedded(name.Str()) + " "));
        EXPECT_THAT(description, EndsWith("."));
        for (char c : digest + description)  // the page writer escapes nothing
            EXPECT_TRUE(c >= ' ' && c <= '~' && std::string("<>&\"").find(c) == std::string::npos) << c;
        digests.insert(digest);
        descriptions.insert(description);

        std::istringstream seeAlso(" " + documentation->GetClassSeeAlso().Str());
        std::set<std::string> others;
        for (std::string other; std::getline(seeAlso, other, ',');) {
            ASSERT_THAT(other, StartsWith(" "));
            other.erase(0, 1);
            EXPECT_TRUE(MaxMspExternal::externalMap.contains(other.c_str())) << other;
            EXPECT_NE(other, WithoutEmbedded(name.Str()));
            EXPECT_TRUE(others.insert(other).second) << other << " is named twice";
        }
        EXPECT_FALSE(others.empty());
    }
    EXPECT_EQ(digests.size(), 147u) << "only the two fixnan objects share one";
    EXPECT_EQ(descriptions.size(), 148u);
}

// What is said of tesk.fixnan~ is on its reference page.
TEST(MaxMspExternal, DescribesFixNaNByteForByte) {
    EXPECT_EQ(MaxMspExternal::GetExternal("tesk.fixnan"), 43u);
    const char* const expected[] = {"Filters out NaN or Inf.", "tesk.fixnan replaces NaN or Inf values.",
                                    "tesk.fixnan~, tesk.isnan~"};
    for (int i = 0; i < 3; ++i) EXPECT_EQ(queries[i]("tesk.fixnan").Str(), expected[i]);
}

TEST(MaxMspExternal, AnswersUnknownAndUndocumentedNamesNeutrally) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(MaxMspExternal::GetExternal("tesk.nothing~"), 0u);
    const std::string printed = testing::internal::GetCapturedStderr();
    EXPECT_THAT(printed, HasSubstr("unknwon external : tesk.nothing~\n"));
    EXPECT_EQ(printed.find("unknwon"), printed.rfind("unknwon")) << "printed once: " << printed;

    testing::internal::CaptureStderr();
    for (Query query : queries)
        for (const char* name : {"tesk.nothing~", "", "tesk.freqresponse.embedded", "tesk.monitor.embedded"})
            EXPECT_EQ(query(name).Str(), "") << name;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(MaxMspExternal::externalMap.size(), 156u) << "a query must not add names";
}

}  // namespace
}  // namespace Tesk
