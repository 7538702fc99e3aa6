#pragma once

namespace platform {

/// Whether colours that follow the appearance are dark now, on this thread: as the screen is, unless a scope says
/// otherwise.
bool isDarkNow() noexcept;

/// For all threads.
void setScreenDark(bool dark) noexcept;

/// Colours on this thread while it lives.
class AppearanceScope {
public:
    explicit AppearanceScope(bool dark) noexcept;
    AppearanceScope(const AppearanceScope&) = delete;
    AppearanceScope& operator=(const AppearanceScope&) = delete;
    ~AppearanceScope();

private:
    int outer_;
};

} // namespace platform
