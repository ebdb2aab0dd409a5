#include "tests/support/server_process.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace amperly {

ServerProcess::ServerProcess(std::vector<std::string> command)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        std::abort();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], kAnnouncementDescriptor);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::vector<char*> arguments;
    for (std::string& word : command)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    if (posix_spawnp(&m_process, arguments.front(), &actions, nullptr, arguments.data(), environ) != 0)
        m_process = 0;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    // A server that ends instead closes the pipe.
    for (char character = 0; read(ends[0], &character, 1) == 1 && character != '\n';)
        m_announcement += character;
    close(ends[0]);
}

void ServerProcess::end(int signal)
{
    if (m_process <= 0)
        return;
    kill(m_process, signal);
    waitpid(m_process, nullptr, 0);
    m_process = 0;
}

} // namespace amperly
