#include "platform/darwin/bus_connection.h"

#include "platform/dispatch/queue.h"

#include <algorithm>
#include <cctype>
#include <systemd/sd-bus.h>
#include <utility>

namespace platform::detail {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr const char* objectPath = "/org/appledger/phone";
constexpr const char* notificationInterface = "org.appledger.DarwinNotifications";
constexpr const char* notificationSignal = "Posted";
constexpr const char* peerInterface = "org.appledger.phone.Peer";
constexpr const char* requestMethod = "Request";
constexpr std::string_view peerNamePrefix = "org.appledger.phone.";
constexpr std::size_t longestPeerName = 200;
constexpr milliseconds longestLimit = std::chrono::hours(24 * 365);
/// A daemon that hasn't answered by then is as good as none.
constexpr milliseconds patienceWithDaemon(3000);

struct Unreference {
    void operator()(sd_bus_message* message) const noexcept { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, Unreference>;

bool isPeerName(std::string_view name)
{
    const auto isLetter = [](unsigned char character) { return character < 0x80 && std::isalpha(character) != 0; };
    const auto isDigit = [](unsigned char character) { return character < 0x80 && std::isdigit(character) != 0; };
    return !name.empty() && name.size() <= longestPeerName && isLetter(static_cast<unsigned char>(name.front()))
        && std::ranges::all_of(
            name, [&](unsigned char character) { return isLetter(character) || isDigit(character); });
}

std::string busName(std::string_view peerName)
{
    return std::string(peerNamePrefix).append(peerName);
}

// Text travels as bytes: the bus library's strings can't hold all of UTF-8.
bool appendText(sd_bus_message* message, std::string_view text)
{
    return sd_bus_message_append_array(message, SD_BUS_TYPE_BYTE, text.data(), text.size()) >= 0;
}

std::optional<std::string> readText(sd_bus_message* message)
{
    const void* bytes = nullptr;
    std::size_t size = 0;
    if (sd_bus_message_read_array(message, SD_BUS_TYPE_BYTE, &bytes, &size) <= 0)
        return std::nullopt;
    return std::string(static_cast<const char*>(bytes), size);
}

Message makeRequest(sd_bus* bus, std::string_view peerName, std::string_view request)
{
    sd_bus_message* made = nullptr;
    if (!isPeerName(peerName)
        || sd_bus_message_new_method_call(
               bus, &made, busName(peerName).c_str(), objectPath, peerInterface, requestMethod)
            < 0)
        return nullptr;
    Message message(made);
    sd_bus_message_set_auto_start(made, 0);
    return appendText(made, request) ? std::move(message) : nullptr;
}

/// Zero would stand for the bus library's own limit.
std::uint64_t microseconds(milliseconds limit)
{
    if (limit <= milliseconds::zero())
        return 1;
    return static_cast<std::uint64_t>(std::chrono::microseconds(std::min(limit, longestLimit)).count());
}

steady_clock::time_point deadlineAfter(milliseconds limit)
{
    return steady_clock::now() + std::min(limit, longestLimit);
}

/// What an error instead of a reply means. The daemon says NoReply when the peer dies in the middle of a
/// request, and the bus library says it too when the time is over.
BusOutcome::Status statusOfError(const sd_bus_error& error, steady_clock::time_point deadline)
{
    if (sd_bus_error_has_name(&error, SD_BUS_ERROR_DISCONNECTED) != 0)
        return BusOutcome::Status::Disconnected;
    const bool nobodyAnswered = sd_bus_error_has_name(&error, SD_BUS_ERROR_NO_REPLY) != 0
        || sd_bus_error_has_name(&error, SD_BUS_ERROR_TIMEOUT) != 0;
    return nobodyAnswered && steady_clock::now() >= deadline ? BusOutcome::Status::TimedOut
                                                             : BusOutcome::Status::NoSuchPeer;
}

BusOutcome outcomeOfReply(sd_bus_message* reply)
{
    std::optional<std::string> text = readText(reply);
    if (!text)
        return { BusOutcome::Status::NoSuchPeer, {} };
    return { BusOutcome::Status::Replied, std::move(*text) };
}

/// Waits until the daemon has taken the connection; the bus library itself would wait a minute and a half.
bool waitUntilReady(sd_bus* bus)
{
    const steady_clock::time_point end = steady_clock::now() + patienceWithDaemon;
    while (sd_bus_is_ready(bus) == 0) {
        const int processed = sd_bus_process(bus, nullptr);
        const auto remaining = std::chrono::duration_cast<milliseconds>(end - steady_clock::now());
        if (processed < 0 || remaining <= milliseconds::zero()
            || (processed == 0 && sd_bus_wait(bus, microseconds(remaining)) < 0))
            return false;
    }
    return sd_bus_is_ready(bus) > 0;
}

void callSoon(std::function<void(const BusOutcome&)> done, BusOutcome outcome)
{
    dispatch_async(
        dispatch_get_main_queue(), [done = std::move(done), outcome = std::move(outcome)] { done(outcome); });
}

} // namespace

/// A request that came in. When nobody can answer it any more, the peer that waits is told so.
class BusConnection::Call {
public:
    Call(sd_bus_message* message, std::shared_ptr<BusConnection*> connection)
        : message_(sd_bus_message_ref(message))
        , connection_(std::move(connection))
    {
    }
    ~Call()
    {
        if (!answered_)
            send(nullptr);
    }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    void reply(std::string_view text)
    {
        if (std::exchange(answered_, true))
            return;
        sd_bus_message* made = nullptr;
        const int result = sd_bus_message_new_method_return(message_.get(), &made);
        const Message reply(made);
        send(result >= 0 && appendText(made, text) ? made : nullptr);
    }

private:
    /// Null: an error instead.
    void send(sd_bus_message* reply)
    {
        if (!*connection_)
            return;
        if (reply)
            sd_bus_send((*connection_)->bus_, reply, nullptr);
        else
            sd_bus_reply_method_errorf(message_.get(), SD_BUS_ERROR_FAILED, "the peer has no answer");
        (*connection_)->pump_->arm();
    }

    const Message message_;
    const std::shared_ptr<BusConnection*> connection_;
    bool answered_ = false;
};

/// What the bus library calls.
struct BusConnection::Callbacks {
    static int received(sd_bus_message* message, void* connection, sd_bus_error*)
    {
        const auto& self = *static_cast<BusConnection*>(connection);
        const char* const sender = sd_bus_message_get_sender(message);
        if (std::optional<std::string> name = readText(message))
            self.receiver_.posted(
                std::move(*name), sender && self.ownName_ == sender ? Poster::ThisProcess : Poster::AnotherProcess);
        return 0;
    }

    static int called(sd_bus_message* message, void* connection, sd_bus_error*)
    {
        const auto& self = *static_cast<BusConnection*>(connection);
        if (sd_bus_message_is_method_call(message, peerInterface, requestMethod) <= 0)
            return 0;
        std::optional<std::string> request = readText(message);
        if (!request)
            return sd_bus_reply_method_errorf(message, SD_BUS_ERROR_INVALID_ARGS, "a request is one array of bytes");
        self.receiver_.requested(std::move(*request),
            [call = std::make_shared<Call>(message, self.present_)](std::string_view text) { call->reply(text); });
        return 1;
    }

    static int answered(sd_bus_message* message, void* waiting, sd_bus_error*)
    {
        auto node = static_cast<Waiting*>(waiting)->connection.waiting_.extract(static_cast<const Waiting*>(waiting));
        const sd_bus_error* const error = sd_bus_message_get_error(message);
        callSoon(std::move(node.mapped()->done),
            error ? BusOutcome { statusOfError(*error, node.mapped()->deadline), {} } : outcomeOfReply(message));
        return 1;
    }
};

std::shared_ptr<BusConnection> BusConnection::open(
    const std::string& address, std::string_view peerName, Receiver receiver)
{
    std::shared_ptr<BusConnection> connection(new BusConnection(std::move(receiver)));
    return connection->start(address, peerName) ? connection : nullptr;
}

BusConnection::BusConnection(Receiver receiver)
    : receiver_(std::move(receiver))
{
}

BusConnection::~BusConnection()
{
    pump_.reset();
    *present_ = nullptr;
    // Not the closing that flushes: a daemon that has stopped reading would hold it up for ever.
    sd_bus_close_unref(bus_);
    for (auto& [key, waiting] : waiting_)
        callSoon(std::move(waiting->done), { BusOutcome::Status::Disconnected, {} });
}

bool BusConnection::start(const std::string& address, std::string_view peerName)
{
    if (!peerName.empty() && !isPeerName(peerName))
        return false;
    const char* ownName = nullptr;
    const bool started = sd_bus_new(&bus_) >= 0 && sd_bus_set_address(bus_, address.c_str()) >= 0
        && sd_bus_set_bus_client(bus_, 1) >= 0
        && sd_bus_set_method_call_timeout(bus_, microseconds(patienceWithDaemon)) >= 0 && sd_bus_start(bus_) >= 0
        && waitUntilReady(bus_) && sd_bus_get_unique_name(bus_, &ownName) >= 0
        && sd_bus_add_object(bus_, nullptr, objectPath, &Callbacks::called, this) >= 0
        && sd_bus_match_signal(
               bus_, nullptr, nullptr, nullptr, notificationInterface, notificationSignal, &Callbacks::received, this)
            >= 0;
    if (!started)
        return false;
    ownName_ = ownName;
    // The name comes last: who finds the peer finds it listening.
    constexpr std::uint64_t flags = SD_BUS_NAME_REPLACE_EXISTING | SD_BUS_NAME_ALLOW_REPLACEMENT;
    if (!peerName.empty() && sd_bus_request_name(bus_, busName(peerName).c_str(), flags) < 0)
        return false;
    pump_ = BusPump::make(bus_, { receiver_.served, receiver_.ended });
    return pump_ != nullptr;
}

bool BusConnection::post(std::string_view name)
{
    sd_bus_message* made = nullptr;
    const bool isMade
        = sd_bus_message_new_signal(bus_, &made, objectPath, notificationInterface, notificationSignal) >= 0;
    const Message message(made);
    const bool sent = isMade && appendText(made, name) && sd_bus_send(bus_, made, nullptr) >= 0;
    pump_->arm();
    return sent;
}

void BusConnection::request(std::string_view peerName, std::string_view request, milliseconds limit,
    std::function<void(const BusOutcome&)> done)
{
    const Message message = makeRequest(bus_, peerName, request);
    if (!message) {
        callSoon(std::move(done), { BusOutcome::Status::NoSuchPeer, {} });
        return;
    }
    auto waiting = std::make_unique<Waiting>(*this, deadlineAfter(limit), std::move(done));
    Waiting* const key = waiting.get();
    if (sd_bus_call_async(bus_, nullptr, message.get(), &Callbacks::answered, key, microseconds(limit)) < 0)
        callSoon(std::move(waiting->done), { BusOutcome::Status::Disconnected, {} });
    else
        waiting_.emplace(key, std::move(waiting));
    pump_->arm();
}

BusOutcome BusConnection::requestAndWait(std::string_view peerName, std::string_view request, milliseconds limit)
{
    const Message message = makeRequest(bus_, peerName, request);
    if (!message)
        return { BusOutcome::Status::NoSuchPeer, {} };
    const steady_clock::time_point deadline = deadlineAfter(limit);
    sd_bus_error error = SD_BUS_ERROR_NULL;
    sd_bus_message* received = nullptr;
    const int result = sd_bus_call(bus_, message.get(), microseconds(limit), &error, &received);
    const Message reply(received);
    const BusOutcome outcome
        = result >= 0 ? outcomeOfReply(received) : BusOutcome { statusOfError(error, deadline), {} };
    sd_bus_error_free(&error);
    pump_->arm();
    return outcome;
}

bool BusConnection::roundTrip(milliseconds limit)
{
    sd_bus_message* made = nullptr;
    if (sd_bus_message_new_method_call(
            bus_, &made, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Peer", "Ping")
        < 0)
        return false;
    const Message message(made);
    const int result = sd_bus_call(bus_, made, microseconds(limit), nullptr, nullptr);
    pump_->arm();
    return result >= 0;
}

} // namespace platform::detail
