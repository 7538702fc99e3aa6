#pragma once

#include "platform/runtime/class_definition.h"
#include "platform/runtime/hook.h"
#include "platform/runtime/message.h"

#include <string>
#include <string_view>

/// Two classes for the runtime's tests, and the journal in which their methods and replacements note that
/// they ran.

namespace instruments {

/// What happened, in order: "play | mute".
std::string& journal();
void note(std::string_view what);

class Instrument : public platform::NSObject {
public:
    ~Instrument() override;

    platform::id name;
    platform::id tuning;
    platform::NSInteger volume = 3;

    void play();
    bool isLouderThan(const platform::id& other) const;
    double scale(double factor, platform::NSUInteger times) const;
};

class Guitar final : public Instrument { };

/// Instrument answers `name`, `setName:`, `volume`, `setVolume:`, `play`, `isLouderThan:` and `scale:times:`;
/// the class itself answers `family`. Instance variable: `_tuning`.
extern const platform::ClassDefinition Instrument_class;

/// Inherits everything.
extern const platform::ClassDefinition Guitar_class;

platform::Class instrumentClass();
platform::Class guitarClass();
platform::id newInstrument();
platform::id newGuitar();

/// Instruments that are alive.
int count();

template <auto Function> platform::IMP code()
{
    return reinterpret_cast<platform::IMP>(Function);
}

} // namespace instruments
