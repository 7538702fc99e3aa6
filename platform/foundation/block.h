#pragma once

#include "platform/runtime/class_definition.h"
#include "platform/runtime/encoding.h"
#include "platform/runtime/object.h"

#include <functional>
#include <type_traits>
#include <utility>

namespace platform {

/// A block: a function that is an object. Its C++ type is known to block() and callBlock() alone.
class Block : public NSObject {
public:
    static const ClassDefinition definition;
    explicit Block(const char* types) noexcept
        : types_(types)
    {
    }

    ~Block() override;

    const char* types() const noexcept { return types_; }

private:
    const char* const types_;
};

namespace detail {

/// Ends the process, as a send does, when the block's encoding differs from the caller's.
void checkBlockEncoding(const Block& block, const char* callerTypes);

template <class R, class... A> class TypedBlock final : public Block {
public:
    explicit TypedBlock(std::function<R(A...)> function)
        : Block(blockEncoding<R, A...>)
        , function_(std::move(function))
    {
    }

    R call(A... arguments) const { return function_(arguments...); }

private:
    const std::function<R(A...)> function_;
};

template <class Function> struct BlockMaker : BlockMaker<decltype(&Function::operator())> {
};
template <class F, class R, class... A> struct BlockMaker<R (F::*)(A...) const> {
    using Type = TypedBlock<R, ArgumentType<A>...>;
};

} // namespace detail

/// A block of a lambda whose parameters are objects (`const id&`) and scalars.
template <class Function> id block(Function function)
{
    return make<typename detail::BlockMaker<Function>::Type>(std::move(function));
}

/// Calls a block on this thread. Nil and an object that isn't a block answer nil, zero or false and do
/// nothing: a completion is optional everywhere.
template <class R = void, class... A> R callBlock(const id& block, const A&... arguments)
{
    const auto* const callee = dynamic_cast<const Block*>(block.get());
    if (!callee)
        return R();
    if constexpr (PLATFORM_CHECKS_ENCODINGS)
        detail::checkBlockEncoding(*callee, blockEncoding<R, detail::ArgumentType<A>...>);
    return static_cast<const detail::TypedBlock<R, detail::ArgumentType<A>...>&>(*callee).call(arguments...);
}

} // namespace platform
