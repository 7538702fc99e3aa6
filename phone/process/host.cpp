#include "phone/process/host.h"

#include "phone/control/preferences.h"
#include "phone/control/request_queue.h"
#include "phone/process/process_definition.h"
#include "phone/process/system_images.h"
#include "phone/substrate/injection.h"
#include "platform/darwin/bus.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/descriptor.h"
#include "platform/foundation/files.h"
#include "platform/foundation/locale.h"
#include "platform/foundation/user_defaults.h"
#include "platform/foundation/values.h"

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace phone {

using namespace platform;

namespace {

/// What the owner has set on the device; without a setting the languages stay as they are.
void takeLanguages()
{
    const id stored = NSUserDefaults::suite(".GlobalPreferences")->arrayForKey("AppleLanguages");
    std::vector<std::string> languages;
    for (const id& item : itemsOf(stored))
        if (const auto language = asString(item))
            languages.push_back(language->text());
    if (!languages.empty())
        setPreferredLanguages(std::move(languages));
}

int fail(const std::string& what)
{
    std::fprintf(stderr, "%s\n", what.c_str());
    return 1;
}

/// Tells who started this process of each step of its start.
class StartReport {
public:
    explicit StartReport(int descriptor)
        : descriptor_(descriptor)
    {
        if (descriptor_ && ::fcntl(descriptor_.get(), F_SETFD, FD_CLOEXEC) != 0)
            std::fprintf(stderr, "what this process starts holds its report open\n");
    }

    void tell(const std::string& line) const
    {
        const std::string text = line + "\n";
        if (descriptor_ && ::write(descriptor_.get(), text.data(), text.size()) < 0)
            std::fprintf(stderr, "nobody waits for this process to be ready\n");
    }

private:
    const platform::detail::Descriptor descriptor_;
};

} // namespace

int runProcess(const HostOptions& options)
{
    std::optional<StartReport> report(options.reportDescriptor);
    const ProcessDefinition* const definition = processDefinition(options.processName);
    if (!definition)
        return fail("no process of the phone is called " + options.processName);
    ::prctl(PR_SET_NAME, options.processName.c_str());
    if (!setDeviceRoot(options.root))
        return fail("can't open the device's root " + options.root);
    setProcessFacts({ std::string(definition->bundleIdentifier), options.processName, options.version });
    takeLanguages();
    setBusHandler(requestHandler(definition->requests));
    if (!connectBus(options.busAddress, options.processName, [] { stopRunLoop(); }))
        return fail("can't reach the bus at " + options.busAddress);
    registerClassesOfProcess(definition->name, definition->bundleIdentifier, options.version);
    declareSystemImages(options.version);
    keepPreferencesOfStart();
    if (!options.stock) {
        const auto loading = [&report](const std::string& path) { report->tell("loading " + path); };
        for (const std::string& failure : injectLibraries(loading))
            std::fprintf(stderr, "%s: %s\n", options.processName.c_str(), failure.c_str());
    }
    definition->start();
    report->tell("ready");
    report.reset();
    runRunLoop();
    disconnectBus();
    return 0;
}

} // namespace phone
