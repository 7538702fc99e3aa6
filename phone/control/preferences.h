#pragma once

namespace phone {

/// Keeps what the preference files of the device hold now, before anything is loaded into this process: what reads them
/// once, at its load, has read this.
void keepPreferencesOfStart();

} // namespace phone
