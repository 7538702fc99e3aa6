#include "scenario/mortal_phone.h"

#include <cstdlib>
#include <optional>

namespace scenario {

namespace {

/// A variable of the environment, for the processes that are started meanwhile.
class Variable {
public:
    Variable(const char* name, const std::string& value)
        : name_(name)
    {
        if (const char* const former = std::getenv(name))
            former_ = former;
        ::setenv(name, value.c_str(), 1);
    }
    ~Variable()
    {
        if (former_)
            ::setenv(name_, former_->c_str(), 1);
        else
            ::unsetenv(name_);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* const name_;
    std::optional<std::string> former_;
};

} // namespace

void startMortal(const Phone& phone, const std::string& moment, const std::string& written)
{
    const char* const options = std::getenv("ASAN_OPTIONS");
    const Variable sanitizer("ASAN_OPTIONS", std::string(options ? options : "") + ":verify_asan_link_order=0");
    const Variable library("LD_PRELOAD", KILLED_AT_WRITE_LIBRARY);
    const Variable when("KILLED_AT_WRITE", moment);
    const Variable what("KILLED_AT_WRITE_OF", written);
    phone.answer({ "phone", "up" });
}

} // namespace scenario
