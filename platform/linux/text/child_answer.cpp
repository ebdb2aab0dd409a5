#include "platform/linux/text/child_answer.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace amperly {

namespace {

constexpr int kAnswered = 0;
constexpr int kNoAnswer = 1;

[[noreturn]] void answer(int descriptor, const std::function<std::optional<std::string>()>& work)
{
    const std::optional<std::string> text = work();
    if (!text)
        _exit(kNoAnswer);
    std::string_view rest = *text;
    while (!rest.empty()) {
        const ssize_t written = write(descriptor, rest.data(), rest.size());
        if (written < 0 && errno != EINTR)
            _exit(kNoAnswer);
        if (written > 0)
            rest.remove_prefix(static_cast<std::size_t>(written));
    }
    // Without the parent's clean-up: its files, threads and connections are not the child's.
    _exit(kAnswered);
}

std::string readAll(int descriptor)
{
    std::string text;
    std::array<char, 512> buffer{};
    for (;;) {
        const ssize_t count = read(descriptor, buffer.data(), buffer.size());
        if (count > 0)
            text.append(buffer.data(), static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            return text;
    }
}

} // namespace

std::optional<std::string> answerOfChild(const std::function<std::optional<std::string>()>& work)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    const pid_t child = fork();
    if (child == 0)
        answer(ends[1], work);
    close(ends[1]);

    std::string text;
    if (child > 0)
        text = readAll(ends[0]);
    close(ends[0]);

    int status = 0;
    while (child > 0 && waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return std::nullopt;
    }
    if (child < 0 || !WIFEXITED(status) || WEXITSTATUS(status) != kAnswered)
        return std::nullopt;
    return text;
}

} // namespace amperly
