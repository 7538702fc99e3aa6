#include "platform/foundation/value_objects.h"

namespace platform {

namespace {

constexpr int deepest = 128; ///< a mutable collection may hold itself

void append(std::string& text, const id& object, int depth);

void appendQuoted(std::string& text, std::string_view content)
{
    text += '"';
    for (const char c : content) {
        if (c == '"' || c == '\\')
            text += '\\';
        text += c;
    }
    text += '"';
}

void appendItems(std::string& text, const ArrayValue& items, int depth)
{
    std::string_view separator;
    for (const id& item : items) {
        text += separator;
        append(text, item, depth);
        separator = ", ";
    }
}

void appendCollection(std::string& text, const id& object, int depth)
{
    if (const auto items = asArray(object)) {
        text += '[';
        appendItems(text, *items, depth);
        text += ']';
    } else if (const auto members = asSet(object)) {
        text += '{';
        appendItems(text, *members, depth);
        text += '}';
    } else if (const auto pairs = asDictionary(object)) {
        text += '{';
        std::string_view separator;
        for (const auto& [key, value] : *pairs) {
            text += separator;
            append(text, key, depth);
            text += ": ";
            append(text, value, depth);
            separator = ", ";
        }
        text += '}';
    } else {
        text += '<';
        text += class_getName(object->isa());
        text += '>';
    }
}

void append(std::string& text, const id& object, int depth)
{
    if (!object)
        text += "nil";
    else if (depth == deepest)
        text += "…";
    else if (const auto content = asString(object))
        appendQuoted(text, content->view());
    else if (const auto kind = numberKind(object))
        text += *kind == NumberKind::Boolean ? (boolValue(object) ? "true" : "false") : detail::numberText(object);
    else
        appendCollection(text, object, depth + 1);
}

} // namespace

std::string describe(const id& object)
{
    std::string text;
    append(text, object, 0);
    return text;
}

} // namespace platform
