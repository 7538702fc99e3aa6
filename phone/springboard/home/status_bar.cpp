#include "phone/iconservices/drawing.h"
#include "phone/springboard/home/scenery.h"
#include "phone/system/wall_clock.h"
#include "platform/screen/framework.h"

#include <array>
#include <cstdio>
#include <numbers>

namespace phone {

using namespace platform;

namespace {

void showTime(const id& label)
{
    const LocalTime now = localTime();
    std::array<char, 64> text {};
    std::snprintf(text.data(), text.size(), "%ld:%02ld", now.hour, now.minute);
    send<"setText:", void>(label, string(text.data()));
}

/// Bars of the signal, waves of the network, the charge.
id drawSigns()
{
    return drawImage({ 78, 14 }, [] {
        for (int bar = 0; bar < 4; ++bar) {
            const double height = 4.5 + bar * 2.5;
            fill(roundedRect(CGRectMake(bar * 4.8, 13 - height, 3.2, height), 1), color(0xFFFFFF));
        }
        constexpr double quarter = std::numbers::pi / 4;
        for (const double radius : { 5.0, 9.0 })
            stroke(arc({ 34, 12 }, radius, -3 * quarter, -quarter), color(0xFFFFFF), 2.4);
        fill(disc({ 34, 11.6 }, 1.7), color(0xFFFFFF));
        stroke(roundedRect(CGRectMake(50, 1.5, 23, 11.5), 3.6), color(0xFFFFFF, 0.5), 1);
        fill(roundedRect(CGRectMake(51.8, 3.3, 15.5, 7.9), 2.2), color(0xFFFFFF));
        fill(roundedRect(CGRectMake(74.6, 5.2, 1.7, 4.2), 0.85), color(0xFFFFFF, 0.5));
    });
}

} // namespace

void showStatusBar()
{
    static auto* const window = new id(send<"new">(id(classNamed<"UIWindow">())));
    const CGRect screen = send<"bounds", CGRect>(*window);
    constexpr double height = 47;
    send<"setFrame:", void>(*window, CGRectMake(0, 0, screen.size.width, height));
    send<"setWindowLevel:", void>(*window, 1000.0);
    send<"setUserInteractionEnabled:", void>(*window, false);

    const id time = send<"initWithFrame:">(send<"alloc">(id(classNamed<"UILabel">())), CGRectMake(24, 14, 80, 22));
    send<"setFont:", void>(time, systemFont(17, true));
    send<"setTextColor:", void>(time, color(0xFFFFFF));
    send<"setTextAlignment:", void>(time, 1L);
    send<"addSubview:", void>(*window, time);

    const id signs = send<"initWithFrame:">(
        send<"alloc">(id(classNamed<"UIImageView">())), CGRectMake(screen.size.width - 104, 18, 78, 14));
    send<"setImage:", void>(signs, drawSigns());
    send<"addSubview:", void>(*window, signs);
    send<"setHidden:", void>(*window, false);
    everyMinute([time] { showTime(time); });
}

} // namespace phone
