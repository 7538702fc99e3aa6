#pragma once

namespace phone {

/// Has SpringBoard follow what the system's services do to installed applications, in this process or in another: one
/// that is new gets its icon, of one that was exchanged the former ends and its icon is drawn anew. An application that
/// has gone ends, and so do its icon, its cards and its notifications; one of which the data alone are left ends and
/// keeps its icon.
void followInstallations();

} // namespace phone
