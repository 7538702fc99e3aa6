#pragma once

#include "platform/runtime/class_definition.h"

namespace platform {

class LayerObject;
class ViewObject;

/// What a change of a property asks of its view.
enum class Asks {
    Drawing, ///< it looks different
    Layout, ///< what stands in it stands elsewhere
    Size, ///< it would take up another space
};

/// The one place at which a change of what is seen is told.
void changed(ViewObject& view, Asks what);
/// Of a layer only the drawing can change.
void changed(LayerObject& layer, Asks what);

/// The row of a setter whose change asks for something; the value that stands changes nothing. A plain setter() in this
/// folder says that nothing seen changes.
template <Name Selector, auto Field, Asks What> struct AskingSetter;
template <Name Selector, class C, class T, T C::*Field, Asks What> struct AskingSetter<Selector, Field, What> {
    static void set(const id& self, SEL, detail::ArgumentType<T> value)
    {
        auto& object = static_cast<C&>(*self);
        if (isSame(object.*Field, static_cast<T>(value)))
            return;
        object.*Field = static_cast<T>(value);
        changed(object, What);
    }

private:
    static bool isSame(const T& left, const T& right)
    {
        if constexpr (std::is_same_v<T, id>)
            return isEqual(left, right);
        else
            return left == right;
    }
};
template <Name Selector, auto Field, Asks What> constexpr MethodDefinition setterThatAsks()
{
    return method<Selector, &AskingSetter<Selector, Field, What>::set>();
}

} // namespace platform
