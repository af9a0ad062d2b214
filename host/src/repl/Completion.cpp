#include "repl/Completion.h"

#include <algorithm>
#include <set>
#include <sstream>

namespace velmohost {
namespace {

using Words = std::set<std::string>;

Words FirstWords(const ObjectDescription& object) {
    Words words{"?", "dsp", "preset", "getvalueof", "setvalueof"};
    for (const auto& message : object.messages) words.insert(message.name);
    for (const auto& attribute : object.attributes) {
        if (attribute.isSettable) words.insert(attribute.name);
        if (attribute.isReadable) words.insert("get" + attribute.name);
    }
    return words;
}

Words AttributeNames(const ObjectDescription& object) {
    Words words;
    for (const auto& attribute : object.attributes) words.insert(attribute.name);
    return words;
}

Words LaterWords(const ObjectDescription& object, const std::string& first) {
    if (first == "dsp") return {"start", "stop", "wait"};
    if (first == "preset") return {"recall"};
    if (first == "dictionary") return {"last"};
    for (const auto& attribute : object.attributes) {
        if (attribute.name == first) return {attribute.choices.begin(), attribute.choices.end()};
    }
    const bool takesArguments = std::any_of(object.messages.begin(), object.messages.end(), [&](const auto& message) {
        return message.name == first && !message.arguments.empty();
    });
    return takesArguments ? AttributeNames(object) : Words{};
}

}  // namespace

std::vector<std::string> CompleteLine(const ObjectDescription& object, const std::string& text) {
    const std::size_t wordStart = text.find_last_of(" \t") + 1;
    const std::string word = text.substr(wordStart);
    std::string first;
    std::istringstream(text.substr(0, wordStart)) >> first;
    std::vector<std::string> matches;
    for (const std::string& candidate : first.empty() ? FirstWords(object) : LaterWords(object, first)) {
        if (candidate.starts_with(word)) matches.push_back(candidate);
    }
    return matches;
}

}  // namespace velmohost
