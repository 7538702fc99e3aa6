#pragma once

#include <string_view>

namespace phone {

/// The brightness of the screen, 0.0 to 1.0. Main thread.
double brightness();

/// Sets it, and notes in the journal who did and with what value, which may lie outside the range.
void setBrightness(std::string_view writer, double level, std::string_view remark = {});

} // namespace phone
