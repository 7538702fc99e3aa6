#include "platform/foundation/block.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace platform {

namespace {

id Block_copy(const id& self, SEL)
{
    return self;
}

constexpr MethodDefinition methods[] {
    method<"copy", &Block_copy>(),
};

} // namespace

const ClassDefinition Block::definition { .name = "NSBlock", .methods = methods };

Block::~Block() = default;

namespace detail {

void checkBlockEncoding(const Block& block, const char* callerTypes)
{
    if (block.types() == callerTypes || std::strcmp(block.types(), callerTypes) == 0)
        return;
    std::fprintf(stderr, "the block is \"%s\", the caller calls \"%s\"\n", block.types(), callerTypes);
    std::abort();
}

} // namespace detail

} // namespace platform
