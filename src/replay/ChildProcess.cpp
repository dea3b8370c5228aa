#include "ChildProcess.h"

#include <QProcessEnvironment>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <set>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr int readEnd = 0;
constexpr int writeEnd = 1;

[[noreturn]] void throwSystemError(int error)
{
    throw std::runtime_error(std::strerror(error));
}

// Both ends close on exec, so no other child (ours or another thread's)
// inherits them and keeps a stream open behind our back.
void makePipe(int fds[2])
{
#ifdef VANTREL_HAVE_PIPE2
    if (::pipe2(fds, O_CLOEXEC) != 0)
        throwSystemError(errno);
#else
    if (::pipe(fds) != 0)
        throwSystemError(errno);
    ::fcntl(fds[readEnd], F_SETFD, FD_CLOEXEC);
    ::fcntl(fds[writeEnd], F_SETFD, FD_CLOEXEC);
#endif
}

void closeIfOpen(int &fd)
{
    if (fd >= 0) {
        ::close(fd);
        fd = -1;
    }
}

// Owns the temporary C structures that posix_spawn needs.
struct SpawnRequest
{
    std::vector<QByteArray> argumentBytes;
    std::vector<QByteArray> environmentBytes;
    std::vector<char *> argv;
    std::vector<char *> envp;
    QByteArray workingDirectory;

    SpawnRequest(const QString &command, const QStringList &arguments,
                 const QString &directory, const QHash<QString, QString> &environment)
        : workingDirectory(directory.toLocal8Bit())
    {
        argumentBytes.push_back(QByteArrayLiteral("env"));
        argumentBytes.push_back(command.toLocal8Bit());
        for (const QString &argument : arguments)
            argumentBytes.push_back(argument.toLocal8Bit());
        for (auto it = environment.cbegin(); it != environment.cend(); ++it)
            environmentBytes.push_back((it.key() + QLatin1Char('=') + it.value()).toLocal8Bit());
        for (QByteArray &bytes : argumentBytes)
            argv.push_back(bytes.data());
        argv.push_back(nullptr);
        for (QByteArray &bytes : environmentBytes)
            envp.push_back(bytes.data());
        envp.push_back(nullptr);
    }
};

// The child starts with every signal deliverable and the usual ones at their
// default action, whatever the spawning thread blocked or ignored; otherwise
// a child started from a worker thread could not be terminated.
void resetSignals(posix_spawnattr_t *attributes)
{
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(attributes, &none);
    sigset_t defaults;
    sigemptyset(&defaults);
    for (int signal : {SIGPIPE, SIGTERM, SIGINT, SIGHUP, SIGQUIT, SIGCHLD})
        sigaddset(&defaults, signal);
    posix_spawnattr_setsigdefault(attributes, &defaults);
    // A process group of its own: a time limit or an interrupt ends the
    // child together with everything it started.
    posix_spawnattr_setpgroup(attributes, 0);
    posix_spawnattr_setflags(attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
}

// Every child that has been started and not yet destroyed, for interruptAll.
std::mutex registryLock;
std::set<ChildProcess *> &registry()
{
    static std::set<ChildProcess *> children;
    return children;
}
std::atomic<bool> interrupted{false};
std::atomic<int> cleanups{0}; // living ChildProcess::Cleanup objects

bool refusesToStart() { return interrupted && cleanups == 0; }

} // namespace

struct ChildProcess::Private
{
    pid_t pid = -1;
    int outputFd = -1;
    int errorFd = -1;
    Output output;
    // Guards `pid` against reuse: terminate() signals only while the child
    // has not been reaped, and reaping happens under the same lock.
    std::mutex reapLock;
    std::atomic<bool> reaped{false};
    // Started to put a device back as the user had it: an interrupt lets it
    // finish (only the last resort, killAll, ends it).
    bool isCleanup = false;
    std::atomic<bool> terminated{false}; // SIGTERM sent

    void spawn(const SpawnRequest &request, int outputPipe[2], int errorPipe[2]);
    void drain(int &fd, QByteArray &into);
    bool reapIfExited();
    void pollPipes(int timeoutMilliseconds);
    void signalGroup(int signal);
};

void ChildProcess::Private::signalGroup(int signal)
{
    // Only while the child is not reaped: until then its process group
    // cannot belong to anyone else.
    std::lock_guard lock(reapLock);
    if (!reaped)
        ::kill(-pid, signal);
}

void ChildProcess::Private::spawn(const SpawnRequest &request, int outputPipe[2], int errorPipe[2])
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, outputPipe[writeEnd], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errorPipe[writeEnd], STDERR_FILENO);
    // In a group of its own the child is not in the terminal's foreground:
    // a read from the terminal would stop it for good.
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addchdir_np(&actions, request.workingDirectory.constData());
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    resetSignals(&attributes);

    const int error = ::posix_spawn(&pid, "/usr/bin/env", &actions, &attributes,
                                    request.argv.data(), request.envp.data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throwSystemError(error);
}

// Reads everything the pipe holds right now; closes it at end of stream.
void ChildProcess::Private::drain(int &fd, QByteArray &into)
{
    char buffer[65536];
    while (fd >= 0) {
        const ssize_t count = ::read(fd, buffer, sizeof buffer);
        if (count > 0) {
            into.append(buffer, count);
        } else if (count == 0) {
            closeIfOpen(fd);
        } else if (errno != EINTR) {
            if (errno != EAGAIN && errno != EWOULDBLOCK)
                closeIfOpen(fd);
            return;
        }
    }
}

bool ChildProcess::Private::reapIfExited()
{
    std::lock_guard lock(reapLock);
    if (reaped)
        return true;
    int status = 0;
    pid_t result;
    do {
        result = ::waitpid(pid, &status, WNOHANG);
    } while (result < 0 && errno == EINTR);
    if (result == 0)
        return false;
    if (result < 0) { // not our child any more; nothing sensible left to wait for
        output.exitStatus = 255;
        output.exitedNormally = false;
    } else if (WIFSIGNALED(status)) {
        output.exitStatus = 128 + WTERMSIG(status);
        output.exitedNormally = false;
    } else {
        output.exitStatus = WEXITSTATUS(status);
        output.exitedNormally = true;
    }
    reaped = true;
    return true;
}

void ChildProcess::Private::pollPipes(int timeoutMilliseconds)
{
    pollfd fds[2];
    nfds_t count = 0;
    for (int fd : {outputFd, errorFd})
        if (fd >= 0)
            fds[count++] = pollfd{fd, POLLIN, 0};
    if (count == 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(timeoutMilliseconds));
        return;
    }
    if (::poll(fds, count, timeoutMilliseconds) <= 0)
        return;
    drain(outputFd, output.standardOutput);
    drain(errorFd, output.standardError);
}

ChildProcess::ChildProcess(const QString &command, const QStringList &arguments,
                           const QString &workingDirectory,
                           const QHash<QString, QString> &environment)
    : d(std::make_unique<Private>())
{
    if (refusesToStart())
        throw std::runtime_error("Interrupted.");
    d->isCleanup = cleanups > 0;
    const SpawnRequest request(command, arguments, workingDirectory, environment);
    int outputPipe[2];
    int errorPipe[2];
    makePipe(outputPipe);
    try {
        makePipe(errorPipe);
    } catch (...) {
        closeIfOpen(outputPipe[readEnd]);
        closeIfOpen(outputPipe[writeEnd]);
        throw;
    }
    try {
        d->spawn(request, outputPipe, errorPipe);
    } catch (...) {
        for (int *fd : {&outputPipe[0], &outputPipe[1], &errorPipe[0], &errorPipe[1]})
            closeIfOpen(*fd);
        throw;
    }
    closeIfOpen(outputPipe[writeEnd]);
    closeIfOpen(errorPipe[writeEnd]);
    d->outputFd = outputPipe[readEnd];
    d->errorFd = errorPipe[readEnd];
    ::fcntl(d->outputFd, F_SETFL, O_NONBLOCK);
    ::fcntl(d->errorFd, F_SETFL, O_NONBLOCK);
    {
        std::lock_guard lock(registryLock);
        registry().insert(this);
    }
    // An interrupt that came while this child was being started.
    if (refusesToStart())
        terminate();
}

ChildProcess::~ChildProcess()
{
    {
        std::lock_guard lock(registryLock);
        registry().erase(this);
    }
    if (!d->reaped) {
        terminate();
        if (!waitForExit(2000))
            d->signalGroup(SIGKILL);
        waitForExit();
    }
    closeIfOpen(d->outputFd);
    closeIfOpen(d->errorFd);
}

qint64 ChildProcess::pid() const
{
    return d->pid;
}

bool ChildProcess::isRunning() const
{
    return !d->reaped;
}

bool ChildProcess::waitForExit(int milliseconds)
{
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::milliseconds(std::max(milliseconds, 0));
    int idleSleep = 1;
    for (;;) {
        if (d->reapIfExited()) {
            // Whatever the child wrote is in the pipes now. A grandchild that
            // inherited them may hold them open; we do not wait for it.
            d->drain(d->outputFd, d->output.standardOutput);
            d->drain(d->errorFd, d->output.standardError);
            closeIfOpen(d->outputFd);
            closeIfOpen(d->errorFd);
            return true;
        }
        int slice = 50;
        if (milliseconds >= 0) {
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
            if (left <= 0)
                return false;
            slice = static_cast<int>(std::min<qint64>(slice, left));
        }
        // Once both streams have ended the child is about to exit: look again soon.
        if (d->outputFd < 0 && d->errorFd < 0) {
            slice = std::min(slice, idleSleep);
            idleSleep = std::min(idleSleep * 2, 20);
        }
        d->pollPipes(slice);
    }
}

const ChildProcess::Output &ChildProcess::output() const
{
    return d->output;
}

bool ChildProcess::finishWithin(std::optional<int> seconds)
{
    if (!seconds) {
        waitForExit();
        return true;
    }
    if (waitForExit(*seconds * 1000))
        return true;
    terminate();
    if (!waitForExit(2000))
        d->signalGroup(SIGKILL);
    waitForExit();
    return false;
}

void ChildProcess::terminate()
{
    // Once: a child that is itself a Vantrel command takes a second signal
    // as "out now" and would skip its own clean-up (the device's status bar).
    if (!d->terminated.exchange(true))
        d->signalGroup(SIGTERM);
}

void ChildProcess::interruptAll()
{
    interrupted = true;
    std::lock_guard lock(registryLock);
    for (ChildProcess *child : registry())
        if (!child->d->isCleanup)
            child->terminate();
}

bool ChildProcess::isInterrupted()
{
    return interrupted;
}

ChildProcess::Cleanup::Cleanup()
{
    ++cleanups;
}

ChildProcess::Cleanup::~Cleanup()
{
    --cleanups;
}

void ChildProcess::killAll()
{
    std::lock_guard lock(registryLock);
    for (ChildProcess *child : registry())
        child->d->signalGroup(SIGKILL);
}

QHash<QString, QString> ChildProcess::currentEnvironment()
{
    const QProcessEnvironment system = QProcessEnvironment::systemEnvironment();
    QHash<QString, QString> environment;
    for (const QString &name : system.keys())
        environment.insert(name, system.value(name));
    return environment;
}
