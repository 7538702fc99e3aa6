#include "phone/control/answers.h"
#include "phone/control/request_rows.h"
#include "phone/control/value_json.h"
#include "phone/springboard/home/home_screen.h"
#include "platform/foundation/files.h"
#include "platform/screen/framework.h"

#include <cstring>

namespace phone {

using namespace platform;

namespace {

/// "describe": the views as text, and as they are found by their names.
Json describeScreen(const Json&)
{
    return { { "ok", true }, { "screen", descriptionOfScreen() }, { "windows", toJson(elementsOfScreen()) } };
}

/// "screenshot": into the file "path" of the machine that the phone runs on, "scale" pixels a point.
Json takeScreenshot(const Json& request)
{
    const std::string path = text(request, "path");
    const double scale = request.contains("scale") && request["scale"].is_number() ? request["scale"].get<double>() : 3;
    const std::string picture = pictureOfScreen(scale);
    if (picture.empty())
        return failure("no picture can have that scale");
    if (const int error = writeHostFileAtomically(path, picture))
        return failure("can't write " + path + ": " + std::strerror(error));
    return { { "ok", true }, { "path", path }, { "bytes", picture.size() } };
}

/// "folder": "change" ("open" or "close") the one called "name".
Json changeFolder(const Json& request)
{
    const std::string name = text(request, "name");
    if (text(request, "change") == "open")
        return openFolderNamed(name) ? Json { { "ok", true } }
                                     : failure("no folder called " + name + " can be opened now");
    return closeFolder(name) ? Json { { "ok", true } } : failure("no folder called " + name + " is open");
}

constexpr RequestRow pictureRows[] {
    { "describe", describeScreen },
    { "screenshot", takeScreenshot },
};

constexpr RequestRow rows[] { { "folder", changeFolder } };

} // namespace

extern const RequestRows screenPictureRequests { pictureRows };
extern const RequestRows screenRequests { rows };

} // namespace phone
