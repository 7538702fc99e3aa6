#include "phone/control/answers.h"
#include "phone/control/authentication.h"
#include "phone/control/device.h"
#include "phone/control/request_rows.h"
#include "phone/springboard/roads.h"
#include "phone/substrate/injection.h"
#include "platform/darwin/system.h"

namespace phone {

using namespace platform;

namespace {

/// "status": "ok" and the facts of this process: name, pid, version, injected libraries.
Json processStatus(const Json&)
{
    return { { "ok", true }, { "name", processFacts().processName }, { "pid", processIdentifier() },
        { "ios", processFacts().version.text() }, { "injected", injectedLibraries() } };
}

Json springBoardStatus(const Json& request)
{
    Json status = processStatus(request);
    status["front"] = frontmostApplication();
    status["device"] = deviceState();
    status["prompt"] = promptStatus();
    return status;
}

Json spotlightStatus(const Json& request)
{
    Json status = processStatus(request);
    status["prompt"] = promptStatus();
    return status;
}

constexpr RequestRow rows[] { { "status", processStatus, RequestRow::Turn::AtOnce } };
constexpr RequestRow springBoardRows[] { { "status", springBoardStatus, RequestRow::Turn::AtOnce } };
constexpr RequestRow searchRows[] { { "status", spotlightStatus, RequestRow::Turn::AtOnce } };

} // namespace

extern const RequestRows statusRequests { rows };
extern const RequestRows springBoardStatusRequests { springBoardRows };
extern const RequestRows searchStatusRequests { searchRows };

} // namespace phone
