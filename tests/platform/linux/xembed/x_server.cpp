#include "x_server.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

extern char** environ;

namespace amperly::test {

std::unique_ptr<XServer> XServer::start()
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return nullptr;
    constexpr int kServerEnd = 10;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], kServerEnd);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::array<std::string, 8> words{
        "Xvfb", "-displayfd", "10", "-screen", "0", "400x300x24", "-nolisten", "tcp"};
    std::array<char*, 9> arguments{};
    for (std::size_t index = 0; index < words.size(); ++index)
        arguments[index] = words[index].data();
    pid_t process = 0;
    const int failure = posix_spawnp(&process, "Xvfb", &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);

    // The server writes its number once it listens, and closes the pipe if it ends instead.
    std::string number;
    char character = 0;
    while (failure == 0 && read(ends[0], &character, 1) == 1 && character != '\n')
        number += character;
    close(ends[0]);
    if (failure != 0)
        return nullptr;
    if (number.empty()) {
        waitpid(process, nullptr, 0);
        return nullptr;
    }
    return std::unique_ptr<XServer>(new XServer(process, ":" + number));
}

XServer::XServer(pid_t process, std::string display) : m_process(process), m_display(std::move(display)) { }

XServer::~XServer()
{
    kill(m_process, SIGTERM);
    waitpid(m_process, nullptr, 0);
}

} // namespace amperly::test
