#include "cli/command/output.h"

#include <cstdio>
#include <nlohmann/json.hpp>

namespace cli {

namespace {

OutputFormat format = OutputFormat::Text;

void print(std::FILE* stream, std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stream);
    if (!text.ends_with('\n'))
        std::fputc('\n', stream);
}

} // namespace

void setOutputFormat(OutputFormat newFormat) noexcept
{
    format = newFormat;
}

OutputFormat outputFormat() noexcept
{
    return format;
}

void say(std::string_view text, const nlohmann::json& object)
{
    if (format == OutputFormat::Json)
        print(stdout, object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
    else
        print(stdout, text);
}

ExitStatus refuse(std::string_view reason)
{
    print(stderr, "appledger: " + std::string(reason));
    if (format == OutputFormat::Json)
        say({}, { { "error", reason } });
    return ExitStatus::Refused;
}

} // namespace cli
