#include "cli/history/history_file.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace cli {

using Json = nlohmann::json;
using platform::detail::Descriptor;

namespace {

constexpr const char* historyName = "policy-history";
constexpr const char* lockName = "policy-lock";
constexpr const char* formatName = "appledger-history";
constexpr int formatVersion = 1;
constexpr std::size_t largestHistory = std::size_t { 4 } << 20; ///< bytes; beyond, the older half is forgotten
constexpr std::chrono::seconds patience { 10 };

std::string cant(const char* what, const phone::PhoneDirectory& directory, int error)
{
    return "can't " + std::string(what) + " " + historyName + " in " + directory.runDirectory() + ": "
        + std::strerror(error);
}

bool lockWithin(int descriptor, std::chrono::seconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || std::chrono::steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds { 2 });
    }
    return true;
}

/// 0, or an `errno`.
int readWhole(int descriptor, std::string& content)
{
    content.clear();
    char buffer[1 << 16];
    for (off_t at = 0;;) {
        const ssize_t count = ::pread(descriptor, buffer, sizeof buffer, at);
        if (count < 0 && errno != EINTR)
            return errno;
        if (count == 0)
            return 0;
        content.append(buffer, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        at += std::max<ssize_t>(count, 0);
    }
}

Json header(ChangeNumber last)
{
    return { { "format", formatName }, { "version", formatVersion }, { "last", last } };
}

/// What the lines say, one after the other.
class Reader {
public:
    Reader(History& history, std::optional<Transaction>& begun)
        : history_(history)
        , begun_(begun)
    {
    }

    /// False for the first line of something that is no history, or of a later version's.
    bool readHeader(std::string_view line)
    {
        const Json object = Json::parse(line, nullptr, false);
        if (!object.is_object() || object.value("format", Json()) != formatName
            || object.value("version", Json()) != formatVersion)
            return false;
        if (const Json last = object.value("last", Json()); last.is_number_unsigned())
            history_.countFrom(last.get<ChangeNumber>());
        return true;
    }

    /// A line that can't be read tells nothing.
    void read(std::string_view line)
    {
        const Json object = Json::parse(line, nullptr, false);
        if (!object.is_object())
            return;
        if (auto transaction = Transaction::fromJson(object))
            begun_ = std::move(transaction);
        else if (object.contains("failed"))
            begun_.reset();
        else if (begun_ && object.value("done", Json()) == begun_->number)
            end(object);
    }

private:
    void end(const Json& object)
    {
        if (const auto changes = object.find("changes"); changes != object.end() && changes->is_array()) {
            begun_->changes.clear();
            for (const Json& each : *changes)
                if (auto change = ValueChange::fromJson(each))
                    begun_->changes.push_back(std::move(*change));
        }
        begun_->watched.reset();
        history_.add(std::move(*begun_));
        begun_.reset();
    }

    History& history_;
    std::optional<Transaction>& begun_;
};

/// Bytes up to the end of the last whole line; 0 and `isOurs` false when it is no history.
std::size_t readLines(std::string_view content, History& history, std::optional<Transaction>& begun, bool& isOurs)
{
    Reader reader(history, begun);
    std::size_t start = 0;
    isOurs = true;
    for (std::size_t end = content.find('\n'); end != std::string_view::npos; end = content.find('\n', start)) {
        const std::string_view line = content.substr(start, end - start);
        if (start == 0) {
            isOurs = reader.readHeader(line);
            if (!isOurs)
                return 0;
        } else {
            reader.read(line);
        }
        start = end + 1;
    }
    return start;
}

} // namespace

HistoryFile::HistoryFile(const phone::PhoneDirectory& directory, Descriptor lock)
    : directory_(directory)
    , lock_(std::move(lock))
{
}

std::unique_ptr<HistoryFile> HistoryFile::open(const phone::PhoneDirectory& directory, std::string& problem)
{
    problem = directory.makeRunDirectory();
    if (!problem.empty())
        return nullptr;
    Descriptor lock(directory.openRunFile(lockName, O_RDWR | O_CREAT));
    if (!lock) {
        problem
            = "can't open " + std::string(lockName) + " in " + directory.runDirectory() + ": " + std::strerror(errno);
        return nullptr;
    }
    if (!lockWithin(lock.get(), patience)) {
        problem = "another command changes this phone's policies and doesn't come to an end (" + std::string(lockName)
            + " in " + directory.runDirectory() + ")";
        return nullptr;
    }
    std::unique_ptr<HistoryFile> file(new HistoryFile(directory, std::move(lock)));
    problem = file->read();
    return problem.empty() ? std::move(file) : nullptr;
}

std::string HistoryFile::read()
{
    file_ = Descriptor(directory_.openRunFile(historyName, O_RDWR | O_CREAT | O_APPEND));
    std::string content;
    const int error = file_ ? readWhole(file_.get(), content) : errno;
    if (error != 0)
        return cant("read", directory_, error);
    bool isOurs = true;
    size_ = readLines(content, history_, unfinished_, isOurs);
    if (!isOurs)
        return std::string(historyName) + " in " + directory_.runDirectory()
            + " is no history that this command can go on with; move it away to begin a new one";
    // What was cut off when its writer was killed had changed nothing yet.
    if (size_ < content.size() && ::ftruncate(file_.get(), static_cast<off_t>(size_)) != 0)
        return cant("mend", directory_, errno);
    return size_ > largestHistory && !unfinished_ ? forgetOldest() : "";
}

/// Keeps the newer half, and of the older what is to take itself back.
std::string HistoryFile::forgetOldest()
{
    const auto& all = history_.transactions();
    std::size_t bytes = 0;
    std::size_t first = all.size();
    std::vector<std::string> lines(all.size());
    while (first > 0) {
        const Transaction& transaction = all[first - 1];
        std::string& line = lines[first - 1];
        line = transaction.toJson().dump(-1, ' ', false, Json::error_handler_t::replace) + "\n"
            + Json { { "done", transaction.number } }.dump() + "\n";
        if (bytes + line.size() > largestHistory / 2)
            break;
        bytes += line.size();
        --first;
    }
    for (const Timer& timer : history_.timers())
        for (std::size_t index = 0; index < first; ++index)
            if (all[index].number == timer.number)
                first = index;
    std::string content = header(first == 0 ? 0 : all[first - 1].number).dump() + "\n";
    for (std::size_t index = first; index < all.size(); ++index) {
        if (lines[index].empty())
            lines[index] = all[index].toJson().dump(-1, ' ', false, Json::error_handler_t::replace) + "\n"
                + Json { { "done", all[index].number } }.dump() + "\n";
        content += lines[index];
    }
    if (first == 0)
        return "";
    if (const int error = directory_.replaceRunFile(historyName, content))
        return cant("shorten", directory_, error);
    History shortened;
    std::optional<Transaction> begun;
    bool isOurs = true;
    size_ = readLines(content, shortened, begun, isOurs);
    history_ = std::move(shortened);
    file_ = Descriptor(directory_.openRunFile(historyName, O_RDWR | O_APPEND));
    return file_ ? "" : cant("open", directory_, errno);
}

std::string HistoryFile::append(const Json& line, bool isToLast)
{
    std::string text;
    if (size_ == 0)
        text = header(0).dump() + "\n";
    text += line.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = ::write(file_.get(), text.data() + written, text.size() - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0) {
            const int error = errno;
            // The next writer takes it away, if it can't be done now.
            static_cast<void>(::ftruncate(file_.get(), static_cast<off_t>(size_)) == 0);
            return cant("write", directory_, error);
        }
        written += static_cast<std::size_t>(count);
    }
    if (isToLast && ::fdatasync(file_.get()) != 0)
        return cant("write", directory_, errno);
    size_ += text.size();
    return "";
}

std::string HistoryFile::begin(const Transaction& transaction)
{
    std::string problem = append(transaction.toJson(), true);
    if (problem.empty())
        unfinished_ = transaction;
    return problem;
}

void HistoryFile::finish(const std::optional<std::vector<ValueChange>>& changes)
{
    if (!unfinished_)
        return;
    Json line { { "done", unfinished_->number } };
    if (changes) {
        line["changes"] = Json::array();
        for (const ValueChange& change : *changes)
            line["changes"].push_back(change.toJson());
        unfinished_->changes = *changes;
    }
    append(line, false);
    unfinished_->watched.reset();
    history_.add(std::move(*unfinished_));
    unfinished_.reset();
}

void HistoryFile::abandon()
{
    if (!unfinished_)
        return;
    append({ { "failed", unfinished_->number } }, false);
    unfinished_.reset();
}

History readHistory(const phone::PhoneDirectory& directory, std::string& problem)
{
    History history;
    const Descriptor file(directory.openRunFile(historyName, O_RDONLY));
    if (!file) {
        if (errno != ENOENT)
            problem = cant("read", directory, errno);
        return history;
    }
    std::string content;
    if (const int error = readWhole(file.get(), content)) {
        problem = cant("read", directory, error);
        return history;
    }
    std::optional<Transaction> begun;
    bool isOurs = true;
    readLines(content, history, begun, isOurs);
    if (!isOurs)
        problem = std::string(historyName) + " in " + directory.runDirectory()
            + " is no history that this command can read";
    return history;
}

bool isSomethingUnfinished(const phone::PhoneDirectory& directory)
{
    const Descriptor file(directory.openRunFile(historyName, O_RDONLY));
    struct stat status { };
    if (!file || ::fstat(file.get(), &status) != 0 || status.st_size == 0)
        return false;
    // A transaction that is finished ends with a short line that says so.
    char end[256];
    const off_t start = std::max<off_t>(0, status.st_size - static_cast<off_t>(sizeof end));
    const ssize_t count = ::pread(file.get(), end, sizeof end, start);
    std::string_view text(end, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (!text.ends_with('\n'))
        return true;
    text.remove_suffix(1);
    const std::size_t line = text.rfind('\n');
    // A longer one ends with the changes that were made in place of others.
    if (line == std::string_view::npos && start > 0)
        return true;
    const std::string_view last = line == std::string_view::npos ? text : text.substr(line + 1);
    return last.find("\"done\":") == std::string_view::npos && last.find("\"failed\":") == std::string_view::npos
        && last.find("\"format\":") == std::string_view::npos;
}

} // namespace cli
