#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace cli {

/// Reads the fields of one record. Null and absent are empty; a value of another type makes the record
/// malformed: the first such field is kept as the error. Texts are the record's own.
class RecordReader {
public:
    explicit RecordReader(const nlohmann::json& record)
        : record_(record)
    {
        if (!record.is_object())
            fail("a record is an object");
    }

    std::optional<std::string_view> text(std::string_view key) { return text(record_, key); }
    std::optional<double> number(std::string_view key);
    bool required(std::string_view key); ///< a bool

    /// The object under the key, or null.
    const nlohmann::json* object(std::string_view key);
    std::optional<std::string_view> text(const nlohmann::json& object, std::string_view key);

    void fail(std::string_view what)
    {
        if (error_.empty())
            error_ = what;
    }

    const std::string& error() const noexcept { return error_; } ///< "" while the record is well formed

private:
    static const nlohmann::json* find(const nlohmann::json& object, std::string_view key);

    const nlohmann::json& record_;
    std::string error_;
};

} // namespace cli
