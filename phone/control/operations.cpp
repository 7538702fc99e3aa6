#include "phone/control/answers.h"
#include "phone/control/application_record.h"
#include "phone/control/request_rows.h"
#include "phone/control/value_json.h"
#include "phone/springboard/applications/applications.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

/// What the library's record does with an application. Each operation answers when its completion has come.

namespace phone {

using namespace platform;

namespace {

using Then = std::function<void(const Json& size)>;

template <Name Measure> void measure(const id& record, const Then& then)
{
    send<Measure, void>(record, block([then](const id& size) { then(toJson(size)); }));
}

constexpr auto measureCaches = measure<"getCachesDirectorySizeWithCompletion:">;
constexpr auto measureAll = measure<"getAppUsageDirectorySizeWithCompletion:">;

/// With the record of the request's application, or a refusal.
void withRecord(const Json& request, const Reply& reply, const std::function<void(const id& record)>& work)
{
    const FoundRecord found = applicationRecord(text(request, "application"));
    if (found.record)
        work(found.record);
    else
        reply(failure(found.error));
}

/// "app-size": {"caches", "data"}, as texts.
void tellSize(const Json& request, const Reply& reply)
{
    withRecord(request, reply, [reply](const id& record) {
        measureCaches(record, [record, reply](const Json& caches) {
            measureAll(record, [caches, reply](const Json& all) {
                reply({ { "ok", true }, { "caches", caches }, { "data", all } });
            });
        });
    });
}

/// Measures, clears, and measures again: {"before", "after", "notes"}.
template <Name Clear, auto Measure> void clear(const Json& request, const Reply& reply)
{
    withRecord(request, reply, [reply](const id& record) {
        Measure(record, [record, reply](const Json& before) {
            send<Clear, void>(record, block([record, before, reply] {
                Measure(record, [before, reply](const Json& after) {
                    const std::vector<JournalEntry> entries = takeJournal();
                    reply({ { "ok", true }, { "before", before }, { "after", after },
                        { "notes", subjects(entries, JournalEvent::Note) }, { "journal", toJson(entries) } });
                });
            }));
        });
    });
}

/// The completion of a removal: {"done", "notes"}.
id removalCompletion(const Reply& reply)
{
    return block([reply](bool isDone) {
        settle(); // the Home Screen follows
        const std::vector<JournalEntry> entries = takeJournal();
        reply({ { "ok", true }, { "done", isDone }, { "notes", subjects(entries, JournalEvent::Note) },
            { "journal", toJson(entries) } });
    });
}

void uninstall(const Json& request, const Reply& reply)
{
    withRecord(request, reply,
        [reply](const id& record) { send<"uninstallAppWithCompletion:", void>(record, removalCompletion(reply)); });
}

void offload(const Json& request, const Reply& reply)
{
    withRecord(request, reply, [reply](const id& record) {
        send<"offloadApplicationWithBundleIdentifier:completion:", void>(
            id(classNamed<"ALAppLedger">()), send<"bundleIdentifier">(record), removalCompletion(reply));
    });
}

constexpr RequestRow rows[] {
    { "app-size", tellSize },
    { "app-clear-cache", clear<"clearAppCachesWithCompletion:", measureCaches> },
    { "app-clear-data", clear<"resetDiskContentWithCompletion:", measureAll> },
    { "app-uninstall", uninstall },
    { "app-offload", offload },
};

} // namespace

extern const RequestRows operationRequests { rows };

} // namespace phone
