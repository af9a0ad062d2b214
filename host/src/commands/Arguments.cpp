#include "commands/Arguments.h"

#include "commands/Terminal.h"

namespace velmohost {

Utf8Arguments::Utf8Arguments(int argc, char** argv) : texts(ReadArguments(argc, argv)) {
    for (std::string& text : texts) values.push_back(text.data());
    values.push_back(nullptr);
}

}  // namespace velmohost
