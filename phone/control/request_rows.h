#pragma once

#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string_view>

/// What a process answers: a subject's requests are one table, and a process has the tables of its subjects. A request
/// is a JSON object with a "verb"; an answer has "ok", and where that is false, an "error" for people.

namespace phone {

using Json = nlohmann::json;

/// Replies in its own time, once, on the main thread. When every copy is gone uncalled, the asker is told that there is
/// no answer.
using Reply = std::function<void(const Json& answer)>;

struct RequestRow {
    /// A process serves one request at a time, in the order of their arrival. One that only looks, and at nothing that
    /// a request in the middle leaves half done, is answered at once.
    enum class Turn { InOrder, AtOnce };

    constexpr RequestRow(std::string_view verbName, Json (*function)(const Json& request), Turn when = Turn::InOrder)
        : verb(verbName)
        , answer(function)
        , turn(when)
    {
    }
    constexpr RequestRow(std::string_view verbName, void (*function)(const Json& request, const Reply& reply))
        : verb(verbName)
        , answerLater(function)
    {
    }

    std::string_view verb;
    Json (*answer)(const Json& request) = nullptr;
    void (*answerLater)(const Json& request, const Reply& reply) = nullptr;
    Turn turn = Turn::InOrder;
};

using RequestRows = std::span<const RequestRow>;

// Each stands in the file of its name, with what its requests take and give.
// sorted
extern const RequestRows alertRequests;
extern const RequestRows authenticationRequests;
extern const RequestRows customIconRequests;
extern const RequestRows deviceRequests;
extern const RequestRows exitRequests;
extern const RequestRows fingerRequests;
extern const RequestRows iconRenderingRequests;
extern const RequestRows iconRequests;
extern const RequestRows launchRequests;
extern const RequestRows nameAndBadgeRequests;
extern const RequestRows notificationRequests;
extern const RequestRows operationRequests;
extern const RequestRows permissionRequests;
extern const RequestRows preferenceRequests;
extern const RequestRows recordRequests;
extern const RequestRows screenPictureRequests;
extern const RequestRows screenRequests;
extern const RequestRows searchRequests;
extern const RequestRows searchStatusRequests;
extern const RequestRows springBoardStatusRequests;
extern const RequestRows statusRequests;
extern const RequestRows storeRequests;
extern const RequestRows switcherRequests;
extern const RequestRows transitionRequests;
// end sorted

} // namespace phone
