#include "cli/command/word.h"

#include "platform/foundation/values.h"

namespace cli {

Word::Word(std::in_place_t, std::string_view bytes)
    : text_(platform::asString(platform::string(bytes))->text())
{
}

} // namespace cli
