#include "phone/backboard/brightness.h"

#include "phone/device/levels.h"
#include "phone/system/journal.h"

namespace phone {

double brightness()
{
    return hardwareLevel(HardwareLevel::Brightness);
}

void setBrightness(std::string_view writer, double level, std::string_view remark)
{
    std::string detail = levelText(level);
    if (!remark.empty())
        detail.append(" ").append(remark);
    journal(JournalEvent::Brightness, writer, detail);
    setHardwareLevel(HardwareLevel::Brightness, level);
}

} // namespace phone
