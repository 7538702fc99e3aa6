#include "phone/control/request_queue.h"

#include "phone/control/answers.h"
#include "phone/system/journal.h"
#include "platform/dispatch/activity.h"
#include "platform/dispatch/queue.h"

#include <deque>
#include <utility>

namespace phone {

using namespace platform;

namespace {

class RequestQueue : public std::enable_shared_from_this<RequestQueue> {
public:
    explicit RequestQueue(std::span<const RequestRows* const> tables)
        : tables_(tables)
    {
    }

    void arrive(std::string_view text, BusReply reply)
    {
        Json request = Json::parse(text, nullptr, false);
        const std::string verb = request.is_object() ? phone::text(request, "verb") : "";
        const RequestRow* const row = find(verb);
        if (verb == "ping")
            send(reply, { { "ok", true } });
        else if (!row)
            send(reply, failure("this process doesn't know that request"));
        else if (row->turn == RequestRow::Turn::AtOnce)
            send(reply, row->answer(request));
        else if (waiting_.size() >= mostWaitingRequests)
            send(reply, failure("too many requests wait already"));
        else {
            waiting_.push_back({ *row, std::move(request), std::move(reply) });
            if (!serving_)
                serveNext();
        }
    }

private:
    struct Waiting {
        const RequestRow& row;
        Json request;
        BusReply reply;
    };

    /// The request that is served; the next one's turn comes when nobody can answer this one any more.
    class Turn {
    public:
        Turn(std::shared_ptr<RequestQueue> queue, BusReply reply)
            : queue_(std::move(queue))
            , reply_(std::move(reply))
        {
        }
        ~Turn() { answer(failure("there is no answer")); }
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

        void answer(const Json& answered)
        {
            const BusReply reply = std::exchange(reply_, nullptr);
            if (!reply)
                return;
            send(reply, answered);
            // Not from here: a request that is answered in its own call would begin the next inside it.
            dispatch_async(dispatch_get_main_queue(), [queue = std::move(queue_)] {
                queue->journal_.reset();
                queue->serving_ = false;
                if (!queue->waiting_.empty())
                    queue->serveNext();
            });
        }

    private:
        std::shared_ptr<RequestQueue> queue_;
        BusReply reply_;
    };

    const RequestRow* find(std::string_view verb) const
    {
        for (const RequestRows* const table : tables_)
            for (const RequestRow& row : *table)
                if (row.verb == verb)
                    return &row;
        return nullptr;
    }

    void serveNext()
    {
        serving_ = true;
        const Waiting next = std::move(waiting_.front());
        waiting_.pop_front();
        const Activity activity = newActivity();
        journal_.emplace(activity);
        const ActivityScope scope(activity);
        const auto turn = std::make_shared<Turn>(shared_from_this(), next.reply);
        if (next.row.answer)
            turn->answer(next.row.answer(next.request));
        else
            next.row.answerLater(next.request, [turn](const Json& answered) { turn->answer(answered); });
    }

    const std::span<const RequestRows* const> tables_;
    std::deque<Waiting> waiting_;
    std::optional<OpenJournal> journal_;
    bool serving_ = false;
};

} // namespace

BusHandler requestHandler(std::span<const RequestRows* const> tables)
{
    return [queue = std::make_shared<RequestQueue>(tables)](
               std::string_view request, BusReply reply) { queue->arrive(request, std::move(reply)); };
}

} // namespace phone
