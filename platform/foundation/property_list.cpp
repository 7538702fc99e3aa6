#include "platform/foundation/property_list.h"

#include "platform/foundation/files.h"
#include "platform/foundation/property_list_guard.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <plist/plist.h>
#include <vector>

namespace platform {

namespace {

using detail::Soundness;

struct FreeNode {
    void operator()(void* node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, FreeNode>;

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};
template <class T> using Allocated = std::unique_ptr<T, FreeMemory>;

constexpr std::string_view binaryHeader = "bplist00";
constexpr char dateMarker = 0x33;

std::string binaryOf(plist_t node)
{
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node, &bytes, &length);
    const Allocated<char> owner(bytes);
    return bytes ? std::string(bytes, length) : std::string();
}

// The library's own date calls know whole 32-bit seconds and lose the sign of a fraction, so that a date
// goes through the eight bytes that it has in a binary property list.

double dateOf(plist_t node)
{
    const std::string bytes = binaryOf(node);
    if (bytes.size() < binaryHeader.size() + 9 || bytes[binaryHeader.size()] != dateMarker)
        return 0;
    std::uint64_t bits = 0;
    for (std::size_t index = 0; index < 8; ++index)
        bits = bits << 8 | static_cast<unsigned char>(bytes[binaryHeader.size() + 1 + index]);
    return std::bit_cast<double>(bits);
}

plist_t nodeOfDate(double seconds)
{
    std::string bytes(binaryHeader);
    bytes += dateMarker;
    const auto bits = std::bit_cast<std::uint64_t>(seconds);
    for (int shift = 56; shift >= 0; shift -= 8)
        bytes += static_cast<char>(bits >> shift);
    const std::size_t table = bytes.size();
    bytes += static_cast<char>(binaryHeader.size());
    bytes.append(6, '\0');
    bytes += "\1\1"; // sizes of an offset and of a reference
    bytes.append(7, '\0');
    bytes += '\1'; // one object
    bytes.append(8 + 7, '\0');
    bytes += static_cast<char>(table);
    plist_t node = nullptr;
    plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
    return node;
}

// Both directions recurse as deep as the collections go, which the guards have bounded.

id valueOf(plist_t node);

id arrayOf(plist_t node)
{
    std::vector<id> items;
    items.reserve(plist_array_get_size(node));
    plist_array_iter position = nullptr;
    plist_array_new_iter(node, &position);
    const Allocated<void> owner(position);
    for (;;) {
        plist_t item = nullptr;
        plist_array_next_item(node, position, &item);
        if (!item)
            return array(std::move(items));
        items.push_back(valueOf(item));
    }
}

id dictionaryOf(plist_t node)
{
    std::vector<DictionaryValue::Pair> pairs;
    pairs.reserve(plist_dict_get_size(node));
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(node, &position);
    const Allocated<void> owner(position);
    for (;;) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, position, &key, &item);
        const Allocated<char> keyOwner(key);
        if (!item)
            return dictionary(std::move(pairs));
        pairs.emplace_back(string(key ? key : ""), valueOf(item));
    }
}

id valueOf(plist_t node)
{
    std::uint64_t bits = 0;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return boolean(value != 0);
    }
    case PLIST_UINT:
        plist_get_uint_val(node, &bits);
        return number(static_cast<std::int64_t>(bits));
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return real(value);
    }
    case PLIST_KEY:
    case PLIST_STRING: {
        const char* const text = plist_get_string_ptr(node, nullptr);
        return string(text ? text : "");
    }
    case PLIST_ARRAY:
        return arrayOf(node);
    case PLIST_DICT:
        return dictionaryOf(node);
    case PLIST_DATE:
        return date(dateOf(node));
    case PLIST_DATA: {
        const char* const bytes = plist_get_data_ptr(node, &bits);
        return data(bytes ? std::string_view(bytes, bits) : std::string_view());
    }
    case PLIST_UID:
        plist_get_uid_val(node, &bits);
        return dictionary({ { "CF$UID", number(static_cast<std::int64_t>(bits)) } });
    default:
        return nil;
    }
}

struct Parsed {
    Node node; ///< none unless it is sound
    Soundness soundness;
};

Parsed parse(std::string_view bytes)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (bytes.size() > detail::largestPropertyList)
        return { nullptr, Soundness::TooLarge };
    if (bytes.starts_with(byteOrderMark))
        bytes.remove_prefix(byteOrderMark.size());
    const auto length = static_cast<std::uint32_t>(bytes.size());
    const bool isBinary = bytes.starts_with(binaryHeader);
    const Soundness soundness
        = isBinary ? detail::soundnessOfBinaryPropertyList(bytes) : detail::soundnessOfXmlPropertyList(bytes);
    if (soundness != Soundness::Sound)
        return { nullptr, soundness };
    plist_t node = nullptr;
    if (isBinary)
        plist_from_bin(bytes.data(), length, &node);
    else
        plist_from_xml(bytes.data(), length, &node);
    return { Node(node), node ? Soundness::Sound : Soundness::Malformed };
}

/// Of a value that propertyListCopy() has copied.
plist_t nodeOf(const id& value)
{
    if (const auto text = asString(value))
        return plist_new_string(text->text().c_str());
    if (const auto kind = numberKind(value)) {
        if (*kind == NumberKind::Boolean)
            return plist_new_bool(boolValue(value) ? 1 : 0);
        return *kind == NumberKind::Real ? plist_new_real(*asDouble(value))
                                         : plist_new_uint(static_cast<std::uint64_t>(*asInteger(value)));
    }
    if (const auto bytes = asData(value))
        return plist_new_data(bytes->view().data(), bytes->view().size());
    if (const auto seconds = asDate(value))
        return nodeOfDate(*seconds);
    if (const auto items = asArray(value)) {
        const plist_t node = plist_new_array();
        for (const id& item : *items)
            plist_array_append_item(node, nodeOf(item));
        return node;
    }
    // By key, so that dictionaries that are equal are the same bytes.
    std::vector<std::pair<std::string, id>> sorted;
    for (const auto& [key, item] : pairsOf(value))
        sorted.emplace_back(asString(key)->text(), item);
    std::ranges::sort(sorted, {}, &std::pair<std::string, id>::first);
    const plist_t node = plist_new_dict();
    for (const auto& [key, item] : sorted)
        plist_dict_set_item(node, key.c_str(), nodeOf(item));
    return node;
}

bool isXmlText(std::string_view text)
{
    for (const char c : text)
        if (static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r')
            return false;
    return text.find("\xEF\xBF\xBE") == std::string_view::npos && text.find("\xEF\xBF\xBF") == std::string_view::npos;
}

/// Whether a value that was read from XML holds an archiver's reference, which only XML writes as such a dictionary.
bool holdsReference(const id& value)
{
    const DictionaryValue pairs = pairsOf(value);
    if (pairs.size() == 1 && numberKind(pairs["CF$UID"]) == NumberKind::Integer)
        return true;
    for (const auto& [key, item] : pairs)
        if (holdsReference(item))
            return true;
    for (const id& item : itemsOf(value))
        if (holdsReference(item))
            return true;
    return false;
}

/// Whether every string of a value that propertyListCopy() has copied is made of characters of XML.
bool isXmlValue(const id& value)
{
    if (const auto text = asString(value))
        return isXmlText(text->view());
    for (const id& item : itemsOf(value))
        if (!isXmlValue(item))
            return false;
    for (const auto& [key, item] : pairsOf(value))
        if (!isXmlValue(key) || !isXmlValue(item))
            return false;
    return true;
}

} // namespace

PropertyListReading readPropertyList(std::string_view bytes)
{
    const Parsed parsed = parse(bytes);
    switch (parsed.soundness) {
    case Soundness::TooLarge:
        return { nil, false, "it is larger, or nested deeper, than any property list that is read here" };
    case Soundness::Malformed:
        return { nil, true, "it isn't a property list, or is damaged" };
    case Soundness::Sound:
        break;
    }
    return { valueOf(parsed.node.get()), false, {} };
}

id propertyListFromData(std::string_view bytes)
{
    return readPropertyList(bytes).value;
}

bool isKeptByWriting(std::string_view bytes)
{
    const Parsed parsed = parse(bytes);
    if (!parsed.node || (bytes.starts_with(binaryHeader) && detail::binaryPropertyListHoldsForeignText(bytes)))
        return false;
    const id copied = propertyListCopy(valueOf(parsed.node.get()));
    if (!bytes.starts_with(binaryHeader) && holdsReference(copied))
        return false;
    // What the library read, and what it is given to write: the same bytes, unless a value changed in between.
    return copied && binaryOf(parsed.node.get()) == binaryOf(Node(nodeOf(copied)).get());
}

std::optional<std::string> dataFromPropertyList(const id& value, PropertyListFormat format)
{
    const id copied = propertyListCopy(value);
    if (!copied || (format == PropertyListFormat::Xml && !isXmlValue(copied)))
        return std::nullopt;
    const Node node(nodeOf(copied));
    if (format == PropertyListFormat::Binary) {
        std::string bytes = binaryOf(node.get());
        return bytes.empty() ? std::nullopt : std::optional(std::move(bytes));
    }
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(node.get(), &bytes, &length);
    const Allocated<char> owner(bytes);
    return bytes ? std::optional<std::string>(std::in_place, bytes, length) : std::nullopt;
}

id dictionaryWithContentsOfFile(std::string_view path)
{
    const auto bytes = readFile(path, detail::largestPropertyList);
    const id value = bytes ? propertyListFromData(*bytes) : nil;
    return asDictionary(value) ? value : nil;
}

id arrayWithContentsOfFile(std::string_view path)
{
    const auto bytes = readFile(path, detail::largestPropertyList);
    const id value = bytes ? propertyListFromData(*bytes) : nil;
    return asArray(value) ? value : nil;
}

int writePropertyList(const id& value, std::string_view path, PropertyListFormat format, unsigned mode)
{
    const auto bytes = dataFromPropertyList(value, format);
    return bytes ? writeFileAtomically(path, *bytes, mode) : EINVAL;
}

} // namespace platform
