#include "phone/iconservices/glyphs.h"

#include "phone/iconservices/drawing.h"
#include "phone/system/wall_clock.h"
#include "platform/screen/framework.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <string>

namespace phone {

using namespace platform;

namespace {

using std::numbers::pi;

id white(double alpha = 1)
{
    return color(0xFFFFFF, alpha);
}

CGPoint onCircle(double radius, double angle)
{
    return { 30 + radius * std::cos(angle), 30 + radius * std::sin(angle) };
}

void drawBrush()
{
    const double third = 2 * pi / 3;
    for (int side = 0; side < 3; ++side) {
        const double angle = -pi / 2 + side * third;
        stroke(polygon({ onCircle(16, angle - 0.25), onCircle(14, angle + pi + 0.35) }, PathEnd::Open), white(), 4);
    }
}

void drawBubble()
{
    fill(ellipse(CGRectMake(11, 13, 38, 30)), white());
    fill(polygon({ { 16, 36 }, { 14, 47 }, { 27, 41 } }), white());
}

void drawGear()
{
    for (int tooth = 0; tooth < 12; ++tooth) {
        const double angle = tooth * pi / 6;
        stroke(polygon({ onCircle(14, angle), onCircle(20, angle) }, PathEnd::Open), color(0x3A3C42), 4.5);
    }
    stroke(disc({ 30, 30 }, 14), color(0x3A3C42), 5);
    fill(disc({ 30, 30 }, 6), color(0x3A3C42));
    for (int spoke = 0; spoke < 3; ++spoke)
        stroke(polygon({ { 30, 30 }, onCircle(14, pi / 2 + spoke * 2 * pi / 3) }, PathEnd::Open), color(0x3A3C42), 3);
}

void drawCamera()
{
    fill(roundedRect(CGRectMake(10, 18, 40, 28), 6), color(0x34363B));
    fill(roundedRect(CGRectMake(22, 13, 16, 8), 3), color(0x34363B));
    fill(disc({ 30, 32 }, 10), white());
    fill(disc({ 30, 32 }, 7.5), color(0x34363B));
    fill(disc({ 27.5, 29.5 }, 2), white(0.85));
    fill(disc({ 44, 23 }, 1.6), color(0xFFCC00));
}

void drawCalendar()
{
    constexpr const char* weekdays[] { "SUN", "MON", "TUE", "WED", "THU", "FRI", "SAT" };
    const LocalTime now = localTime();
    drawCentered(weekdays[now.weekday], systemFont(10, true), color(0xFF3B30), { 30, 14 });
    drawCentered(std::to_string(now.day), systemFont(30, false), color(0x1C1C1E), { 30, 37 });
}

void drawEnvelope(const id& paper, const id& fold)
{
    fill(roundedRect(CGRectMake(10, 17, 40, 27), 4.5), paper);
    stroke(polygon({ { 12, 20 }, { 30, 33 }, { 48, 20 } }, PathEnd::Open), fold, 2);
}

void drawMail()
{
    drawEnvelope(white(), color(0x1E7BF2));
}

void drawNotes()
{
    fillGradient(roundedRect(CGRectMake(0, 0, 60, 16), 0), CGRectMake(0, 0, 60, 16), color(0xFFD84A), color(0xFFC107));
    for (const double y : { 26.0, 36.0, 46.0 })
        stroke(polygon({ { 10, y }, { y > 40 ? 34.0 : 50.0, y } }, PathEnd::Open), color(0xC7C7CC), 1.6);
}

void drawCompass()
{
    fill(disc({ 30, 30 }, 24), white());
    fillGradient(disc({ 30, 30 }, 22), CGRectMake(8, 8, 44, 44), color(0x3FC8FA), color(0x1A6DF0));
    for (int mark = 0; mark < 24; ++mark)
        stroke(polygon({ onCircle(mark % 2 == 0 ? 17.5 : 19, mark * pi / 12), onCircle(20.5, mark * pi / 12) },
                   PathEnd::Open),
            white(0.8), 0.8);
    fill(polygon({ { 43, 17 }, { 32.8, 32.8 }, { 27.2, 27.2 } }), color(0xFF453A));
    fill(polygon({ { 17, 43 }, { 27.2, 27.2 }, { 32.8, 32.8 } }), white());
}

void drawPetals()
{
    constexpr std::uint32_t colors[] { 0xF7A823, 0xF2D33B, 0xA3CF4E, 0x52B788, 0x4FA8DC, 0x6F6FD8, 0xB45FC4, 0xF05A67 };
    for (std::size_t petal = 0; petal < std::size(colors); ++petal) {
        const double angle = -pi / 2 + static_cast<double>(petal) * pi / 4;
        stroke(polygon({ onCircle(10, angle), onCircle(16, angle) }, PathEnd::Open), color(colors[petal], 0.82), 11);
    }
}

void drawClock()
{
    fill(disc({ 30, 30 }, 24), white());
    for (int hour = 0; hour < 12; ++hour)
        stroke(polygon({ onCircle(19, hour * pi / 6), onCircle(21.5, hour * pi / 6) }, PathEnd::Open), color(0x1C1C1E),
            1.6);
    const LocalTime now = localTime();
    const double minute = static_cast<double>(now.minute) / 60;
    const double hour = (static_cast<double>(now.hour % 12) + minute) / 12;
    stroke(polygon({ { 30, 30 }, onCircle(12, -pi / 2 + hour * 2 * pi) }, PathEnd::Open), color(0x1C1C1E), 2.6);
    stroke(polygon({ { 30, 30 }, onCircle(18, -pi / 2 + minute * 2 * pi) }, PathEnd::Open), color(0x1C1C1E), 2);
    fill(disc({ 30, 30 }, 1.8), color(0xFF9500));
}

void drawHarbour()
{
    fill(polygon({ { 30, 11 }, { 50, 22 }, { 50, 25 }, { 10, 25 }, { 10, 22 } }), white());
    for (const double x : { 15.0, 26.0, 37.0 })
        fill(roundedRect(CGRectMake(x - 1, 27, 8, 13), 1), white());
    fill(roundedRect(CGRectMake(10, 42, 40, 4), 1.5), white());
}

void drawPigeon()
{
    fill(disc({ 38, 21 }, 7.5), white());
    fill(polygon({ { 44, 18.5 }, { 51, 22 }, { 44, 24 } }), color(0xFFC24B));
    id body = send<"bezierPath">(id(classNamed<"UIBezierPath">()));
    send<"moveToPoint:", void>(body, CGPointMake(44, 24));
    send<"addCurveToPoint:controlPoint1:controlPoint2:", void>(
        body, CGPointMake(28, 45), CGPointMake(46, 38), CGPointMake(38, 45));
    send<"addCurveToPoint:controlPoint1:controlPoint2:", void>(
        body, CGPointMake(8, 27), CGPointMake(18, 45), CGPointMake(12, 38));
    send<"addCurveToPoint:controlPoint1:controlPoint2:", void>(
        body, CGPointMake(31, 20), CGPointMake(18, 34), CGPointMake(28, 33));
    send<"closePath", void>(body);
    fill(body, white());
    fill(disc({ 39.5, 20 }, 1.4), color(0x2C2C54));
}

void drawMarbles()
{
    fillGradient(disc({ 22, 37 }, 12), CGRectMake(10, 25, 24, 24), color(0xFF8A5C), color(0xD7263D));
    fillGradient(disc({ 41, 40 }, 8), CGRectMake(33, 32, 16, 16), color(0xFFE66D), color(0xF29E1F));
    fillGradient(disc({ 38, 20 }, 9.5), CGRectMake(28, 10, 20, 20), color(0x9BF6FF), color(0x2D9CDB));
    for (const CGPoint& shine : { CGPointMake(18, 32), CGPointMake(38.5, 37), CGPointMake(35, 16) })
        fill(disc(shine, 2.4), white(0.75));
}

void drawLetterbox()
{
    fill(roundedRect(CGRectMake(13, 13, 34, 34), 8), white());
    fill(roundedRect(CGRectMake(18, 22, 24, 5), 2.5), color(0xC0392B));
    stroke(polygon({ { 22, 35 }, { 38, 35 } }, PathEnd::Open), color(0xC0392B, 0.35), 2);
    stroke(polygon({ { 22, 40 }, { 33, 40 } }, PathEnd::Open), color(0xC0392B, 0.35), 2);
}

void drawPin()
{
    stroke(polygon({ { 0, 44 }, { 22, 38 }, { 36, 50 }, { 60, 40 } }, PathEnd::Open), white(0.45), 4);
    id pin = send<"bezierPath">(id(classNamed<"UIBezierPath">()));
    send<"moveToPoint:", void>(pin, CGPointMake(30, 46));
    send<"addCurveToPoint:controlPoint1:controlPoint2:", void>(
        pin, CGPointMake(43, 24), CGPointMake(36, 37), CGPointMake(43, 31));
    send<"addArcWithCenter:radius:startAngle:endAngle:clockwise:", void>(
        pin, CGPointMake(30, 24), 13.0, 0.0, -pi, false);
    send<"addCurveToPoint:controlPoint1:controlPoint2:", void>(
        pin, CGPointMake(30, 46), CGPointMake(17, 31), CGPointMake(24, 37));
    send<"closePath", void>(pin);
    fill(pin, white());
    fill(disc({ 30, 24 }, 5.2), color(0x11998E));
}

void drawGramophone()
{
    fill(disc({ 30, 30 }, 20), color(0x1B1B2F));
    for (const double radius : { 17.0, 14.5, 12.0 })
        stroke(disc({ 30, 30 }, radius), white(0.16), 0.8);
    fill(disc({ 30, 30 }, 7.5), color(0xFF5D8F));
    fill(disc({ 30, 30 }, 1.8), white());
    stroke(polygon({ { 49, 11 }, { 44, 30 }, { 37, 35 } }, PathEnd::Open), white(), 2.4);
}

void drawGazette()
{
    fill(roundedRect(CGRectMake(12, 12, 36, 36), 4), white());
    drawCentered("G", systemFont(19, true), color(0x1C1C1E), { 23, 25 });
    for (const double y : { 20.0, 25.0, 30.0 })
        stroke(polygon({ { 33, y }, { 43, y } }, PathEnd::Open), color(0x8E8E93), 1.6);
    for (const double y : { 37.0, 42.0 })
        stroke(polygon({ { 17, y }, { 43, y } }, PathEnd::Open), color(0xC7C7CC), 1.6);
}

void drawPencil()
{
    stroke(polygon({ { 14, 44 }, { 22, 40 }, { 28, 46 }, { 36, 41 }, { 46, 45 } }, PathEnd::Open), white(0.55), 2.6);
    fill(polygon({ { 40, 11 }, { 48, 19 }, { 28, 38 }, { 18, 41 }, { 20.5, 31 } }), white());
    fill(polygon({ { 18, 41 }, { 19.4, 35.6 }, { 23.4, 39.5 } }), color(0x4A2FBD));
}

void drawShop()
{
    for (int stripe = 0; stripe < 5; ++stripe) {
        const double x = 11 + stripe * 7.6;
        fill(roundedRect(CGRectMake(x, 14, 7.6, 14), 3.5), stripe % 2 == 0 ? white() : color(0xFFE0B2));
    }
    fill(roundedRect(CGRectMake(14, 27, 32, 20), 2), white(0.92));
    fill(roundedRect(CGRectMake(33, 31, 9, 16), 1), color(0xE65100));
    fill(roundedRect(CGRectMake(18, 31, 11, 9), 1), color(0xFFB74D));
}

void drawLantern()
{
    fill(roundedRect(CGRectMake(17, 15, 26, 30), 10), white(0.95));
    fill(polygon({ { 26, 23 }, { 38, 30 }, { 26, 37 } }), color(0x8E0E5B));
    stroke(polygon({ { 22, 11 }, { 38, 11 } }, PathEnd::Open), white(), 3);
    stroke(polygon({ { 22, 49 }, { 38, 49 } }, PathEnd::Open), white(), 3);
}

struct GlyphIcon {
    std::string_view identifier;
    std::uint32_t top;
    std::uint32_t bottom;
    void (*draw)();
};

constexpr GlyphIcon icons[] {
    // sorted
    { "com.apple.AppStore", 0x35C3FA, 0x1A63F0, drawBrush }, { "com.apple.MobileSMS", 0x72F06F, 0x17C23B, drawBubble },
    { "com.apple.Preferences", 0xE4E5EA, 0xA9ABB3, drawGear }, { "com.apple.camera", 0xEDEEF2, 0xC6C8CF, drawCamera },
    { "com.apple.mobilecal", 0xFFFFFF, 0xF4F4F6, drawCalendar },
    { "com.apple.mobilemail", 0x4FC3F7, 0x1465EB, drawMail },
    { "com.apple.mobilenotes", 0xFFFFFF, 0xFFFFFF, drawNotes },
    { "com.apple.mobilesafari", 0xF7F8FA, 0xDCE1E8, drawCompass },
    { "com.apple.mobileslideshow", 0xFFFFFF, 0xF6F6F8, drawPetals },
    { "com.apple.mobiletimer", 0x2A2A2E, 0x0E0E10, drawClock }, { "com.example.bank", 0x2E6E8E, 0x123B5D, drawHarbour },
    { "com.example.chat", 0x8E8CF2, 0x5654C8, drawPigeon }, { "com.example.game", 0x2F3E7A, 0x171C40, drawMarbles },
    { "com.example.mail", 0xF26B5E, 0xC0392B, drawLetterbox }, { "com.example.maps", 0x5BD68C, 0x11998E, drawPin },
    { "com.example.music", 0xFF9A6C, 0xE8336D, drawGramophone },
    { "com.example.news", 0xF25C54, 0x9D1B2B, drawGazette }, { "com.example.notes", 0xA18CF0, 0x5A3FD0, drawPencil },
    { "com.example.shop", 0xFFB35C, 0xF0701A, drawShop }, { "com.example.video", 0xE0569B, 0x6A0F6F, drawLantern },
    // end sorted
};

} // namespace

bool drawGlyphIcon(std::string_view identifier, const CGRect& square)
{
    const auto found = std::ranges::find(icons, identifier, &GlyphIcon::identifier);
    if (found == std::end(icons))
        return false;
    fillGradient(roundedRect(square, 0), square, color(found->top), color(found->bottom));
    found->draw();
    return true;
}

} // namespace phone
