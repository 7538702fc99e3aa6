#include "launch/redirect_hooks.h"

#include "core/policies.h"
#include "launch/redirect_decision.h"
#include "launch/transition_request.h"
#include "platform/dispatch/clock.h"

namespace appledger {

using namespace platform;

namespace {

bool isMainWorkspaceRequest(const id& request)
{
    return isKindOfClass(request, classNamed<"SBMainWorkspaceTransitionRequest">());
}

std::optional<std::string_view> view(const std::optional<StringValue>& text)
{
    return text ? std::optional(text->view()) : std::nullopt;
}

SourceAction actionOf(const id& sourceEntity)
{
    const id action = askObject<"anyObject">(askObject<"actions">(sourceEntity));
    if (!action)
        return SourceAction::None;
    return isKindOfClass(action, classNamed<"UIOpenURLAction">()) ? SourceAction::OpenUrl : SourceAction::Other;
}

id previousScene(const id& request)
{
    const id state = askObject<"previousLayoutState">(askObject<"applicationContext">(request));
    return askObject<"uniqueIdentifier">(askObject<"elementWithRole:">(state, NSInteger { 1 }));
}

/// What the decision reads of a request; keeps the texts alive.
class TransitionReading {
public:
    explicit TransitionReading(const id& request)
        : label_(askObject<"eventLabel">(request))
        , sourceEntity_(askObject<"anyObject">(askObject<"fromApplicationSceneEntities">(request)))
        , source_(bundleIdentifierOfEntity(sourceEntity_))
        , requester_(askObject<"originatingProcess">(request))
        , requesterName_(asString(askObject<"name">(requester_)))
        , requesterBundleIdentifier_(asString(askObject<"bundleIdentifier">(requester_)))
        , previousScene_(asString(appledger::previousScene(request)))
        , destination_(destinationOfRequest(request))
    {
    }

    Transition transition() const
    {
        Transition read { .eventLabel = label(),
            .requesterName = view(requesterName_),
            .requesterBundleIdentifier = view(requesterBundleIdentifier_),
            .previousScene = view(previousScene_),
            .destination = view(destination_) };
        if (sourceEntity_)
            read.sourceEntity = { view(source_), actionOf(sourceEntity_) };
        return read;
    }

private:
    /// A label that isn't a string is one that we don't know.
    std::optional<std::string_view> label() const
    {
        return label_ && !labelText_ ? std::optional<std::string_view>("") : view(labelText_);
    }

    const id label_;
    const std::optional<StringValue> labelText_ = asString(label_);
    const id sourceEntity_;
    const std::optional<StringValue> source_;
    const id requester_;
    const std::optional<StringValue> requesterName_;
    const std::optional<StringValue> requesterBundleIdentifier_;
    const std::optional<StringValue> previousScene_;
    const std::optional<StringValue> destination_;
};

RedirectVerdict decide(const TransitionReading& reading)
{
    const ReadSection section;
    const PolicyCache::Reading hidden = g_hiddenApps.read();
    return decideRedirect(reading.transition(), { currentRedirectRules(), hidden.list(), gLastTransitionStamps.load() },
        CACurrentMediaTime());
}

struct ExecuteTransitionRequest : Hook<ExecuteTransitionRequest, "SBMainWorkspace",
                                      "_executeTransitionRequest:options:validator:", bool(id, id, id)> {
    static bool replacement(const id& self, SEL cmd, const id& request, const id& options, const id& validator)
    {
        if (!original(self, cmd, request, options, validator))
            return false;
        if (isMainWorkspaceRequest(request))
            if (const auto destination = destinationOfRequest(request))
                recordLaunch(*destination, CACurrentMediaTime());
        return true;
    }
};

struct CanExecuteTransitionRequest : Hook<CanExecuteTransitionRequest, "SBMainWorkspace",
                                         "_canExecuteTransitionRequest:forExecution:", bool(id, bool)> {
    static bool replacement(const id& self, SEL cmd, const id& request, bool forExecution)
    {
        if (!isMainWorkspaceRequest(request))
            return original(self, cmd, request, forExecution);
        const TransitionReading reading(request);
        const RedirectVerdict verdict = decide(reading);
        switch (verdict.outcome) {
        case RedirectOutcome::Decline:
            send<"declineWithReason:", void>(request, string(verdict.reason()));
            return false;
        case RedirectOutcome::Background:
            ask<"setBackground:", void>(askObject<"applicationContext">(request), true);
            break;
        case RedirectOutcome::Pass:
            break;
        }
        return original(self, cmd, request, forExecution);
    }
};

constexpr HookRow rows[] {
    ExecuteTransitionRequest::row(),
    CanExecuteTransitionRequest::row(),
};

} // namespace

const HookGroup NoRedirectPrimary { "NoRedirectPrimary", rows };

} // namespace appledger
