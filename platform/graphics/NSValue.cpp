#include "platform/graphics/objects.h"

#include <functional>
#include <type_traits>

namespace platform {

namespace {

/// A point, size, rectangle or transform as an object. Of another kind than it is asked for, it answers one of zeros.
template <class T> class BoxedStructure final : public NSObject {
public:
    T value {};

    bool isEqualTo(const NSObject& other) const noexcept override
    {
        const auto* const same = dynamic_cast<const BoxedStructure*>(&other);
        return same && same->value == value;
    }
    std::size_t hashValue() const noexcept override
    {
        return std::hash<double>()(*reinterpret_cast<const double*>(&value));
    }
};

template <class T> id box(const id& self, SEL, T value)
{
    const Ref<BoxedStructure<T>> boxed = Ref<BoxedStructure<T>>::adopt(new BoxedStructure<T>);
    setClass(*boxed, static_cast<Class>(static_cast<ClassObject*>(self.get())));
    boxed->value = value;
    return boxed;
}

template <class T> T unbox(const id& self, SEL)
{
    const auto* const boxed = as<BoxedStructure<T>>(self);
    return boxed ? boxed->value : T {};
}

constexpr MethodDefinition methods[] {
    method<"CGAffineTransformValue", &unbox<CGAffineTransform>>(),
    method<"CGPointValue", &unbox<CGPoint>>(),
    method<"CGRectValue", &unbox<CGRect>>(),
    method<"CGSizeValue", &unbox<CGSize>>(),
    classMethod<"valueWithCGAffineTransform:", &box<CGAffineTransform>>(),
    classMethod<"valueWithCGPoint:", &box<CGPoint>>(),
    classMethod<"valueWithCGRect:", &box<CGRect>>(),
    classMethod<"valueWithCGSize:", &box<CGSize>>(),
};

} // namespace

const ClassDefinition NSValue_class { .name = "NSValue", .methods = methods };

} // namespace platform
