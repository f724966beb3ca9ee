#include "host/io/AtomicFile.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <random>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ombrelune {

namespace fs = std::filesystem;

namespace {

std::string PathOfDescriptor(int descriptor) { return fmt::format("/proc/self/fd/{}", descriptor); }

/// The names of temporaries, where a signal handler can read them: fixed memory, no locks. A slot is taken by
/// whoever turns it from free to busy, and its name counts while it is set.
struct Slot {
    enum State { kFree, kBusy, kSet };
    std::atomic<int> state = kFree;
    std::array<char, 4096> name;
};
constexpr int kMostSlots = 64;
std::array<Slot, kMostSlots> slots;
static_assert(std::atomic<int>::is_always_lock_free);

/// -1 when there is no room: then a signal leaves that file behind, which the next render tells of.
int TakeSlot(std::string const& name)
{
    if (name.size() >= slots[0].name.size()) return -1;
    for (int i = 0; i < kMostSlots; ++i) {
        Slot& slot = slots[static_cast<std::size_t>(i)];
        int free = Slot::kFree;
        if (!slot.state.compare_exchange_strong(free, Slot::kBusy)) continue;
        std::memcpy(slot.name.data(), name.c_str(), name.size() + 1);
        slot.state = Slot::kSet;
        return i;
    }
    return -1;
}

void FreeSlot(int& slot)
{
    if (slot >= 0) slots[static_cast<std::size_t>(slot)].state = Slot::kFree;
    slot = -1;
}

extern "C" void EndBySignal(int signal)
{
    RemoveTemporaries();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

/// This machine's name, without what would be read as a part of a temporary's name.
std::string HostName()
{
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    std::string text = name.data();
    text.resize(std::min<std::size_t>(text.size(), 40));
    for (char& c : text)
        if (c == '/' || c == '.') c = '_';
    return text;
}

// ".NAME.ombrelune-HOST-PROCESS-RANDOM.tmp": machines and containers that share a folder may share the
// numbers of processes and even their names.
constexpr std::string_view kMark = ".ombrelune-", kEnd = ".tmp";

/// The name is cut to stay a legal one.
std::string TemporaryName(fs::path const& target)
{
    std::random_device random;
    return fmt::format(".{}{}{}-{}-{:08x}{:08x}{}", target.filename().string().substr(0, 150), kMark,
                       HostName(), getpid(), random(), random(), kEnd);
}

/// The file that a path leads to through links, be it there or not.
std::string BehindLinks(std::string const& path)
{
    fs::path place = path;
    std::error_code error;
    for (int links = 0; links < 40 && fs::is_symlink(fs::symlink_status(place, error)); ++links) {
        fs::path const next = fs::read_symlink(place, error);
        if (error) break;
        place = next.is_absolute() ? next : place.parent_path() / next;
    }
    return place.string();
}

/// So that a name outlives a crash of the machine, too. Some file systems cannot; the file is whole anyway.
void SyncFolder(std::string const& folder)
{
    int const descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    fsync(descriptor);
    close(descriptor);
}

std::string FolderOf(std::string const& file)
{
    fs::path const folder = fs::path(file).parent_path();
    return folder.empty() ? "." : folder.string();
}

} // namespace

void RemoveTemporaries()
{
    for (Slot& slot : slots)
        if (slot.state == Slot::kSet) unlink(slot.name.data());
}

void RemoveTemporariesOnSignals()
{
    for (int const signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action = {};
        // What is ignored, as under nohup, stays so.
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) continue;
        action = {};
        action.sa_handler = EndBySignal;
        sigaction(signal, &action, nullptr);
    }
}

std::vector<std::string> StaleTemporaries(std::string const& folder)
{
    std::vector<std::string> stale;
    std::string const host = HostName() + "-";
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        std::string const name = it->path().filename().string();
        auto const mark = name.rfind(kMark);
        if (mark == std::string::npos || !name.starts_with('.') || !name.ends_with(kEnd)) continue;
        std::string const rest = name.substr(mark + kMark.size());
        if (!rest.starts_with(host)) continue;
        int const process = std::atoi(rest.c_str() + host.size());
        if (process > 0 && kill(process, 0) != 0 && errno == ESRCH) stale.push_back(it->path().string());
    }
    std::sort(stale.begin(), stale.end());
    return stale;
}

AtomicFile::~AtomicFile()
{
    if (stream_) std::fclose(stream_);
    if (isNamed_) unlink(temporary_.c_str());
    FreeSlot(slot_);
}

Problem AtomicFile::Failed(std::string const& what, int error) const
{
    return {path_, 0, fmt::format("{}: {}", what, std::generic_category().message(error))};
}

std::optional<Problem> AtomicFile::Open()
{
    if (path_.find('\0') != std::string::npos)
        return Problem{path_, 0, "a file name cannot hold a zero byte"};
    target_ = BehindLinks(path_);
    fs::path const target(target_);
    std::error_code error;
    auto const status = fs::status(target, error);
    if (fs::is_directory(status)) return Problem{path_, 0, "is a folder; give the name of a file"};
    // Renaming over a device or a pipe would replace it.
    if (fs::exists(status) && !fs::is_regular_file(status))
        return Problem{path_, 0, "is no regular file; give another name"};
    std::string const folder = FolderOf(target_);
    if (!fs::is_directory(folder, error)) {
        fs::create_directories(folder, error);
        if (error) return Failed(fmt::format("cannot make the folder {}", Quoted(folder)), error.value());
    }

    temporary_ = (target.parent_path() / TemporaryName(target)).string();
    // A name is given to it through /proc, so that has to be there.
    int descriptor = -1;
    if (naming_ == Naming::kLate && access("/proc/self/fd", X_OK) == 0)
        descriptor = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        slot_ = TakeSlot(temporary_);
        descriptor = open(temporary_.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0666);
        if (descriptor < 0) {
            int const code = errno;
            FreeSlot(slot_);
            return Failed("cannot be written", code);
        }
        isNamed_ = true;
    }
    struct stat old = {};
    if (stat(target_.c_str(), &old) == 0) fchmod(descriptor, old.st_mode & 07777);
    stream_ = fdopen(descriptor, "wb");
    return {};
}

std::optional<Problem> AtomicFile::Commit()
{
    bool const failed = std::ferror(stream_) != 0;
    int code = std::fflush(stream_) == 0 ? 0 : errno;
    // Some file systems know no fsync; only what says that bytes are lost counts.
    if (!failed && code == 0 && fsync(fileno(stream_)) != 0 && errno != EINVAL && errno != ENOSYS)
        code = errno;
    if (!failed && code == 0 && !isNamed_) {
        slot_ = TakeSlot(temporary_);
        isNamed_ = linkat(AT_FDCWD, PathOfDescriptor(fileno(stream_)).c_str(), AT_FDCWD, temporary_.c_str(),
                          AT_SYMLINK_FOLLOW) == 0;
        if (!isNamed_) code = errno;
    }
    if (std::fclose(stream_) != 0 && code == 0) code = errno;
    stream_ = nullptr;
    if (failed) return Problem{path_, 0, "could not be written whole; is the disk full?"};
    if (code != 0) return Failed("could not be written whole", code);
    if (std::rename(temporary_.c_str(), target_.c_str()) != 0) return Failed("cannot be replaced", errno);
    isNamed_ = false;
    FreeSlot(slot_);
    SyncFolder(FolderOf(target_));
    return {};
}

} // namespace ombrelune
