#include "Tests/Window/Process.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

Process::Process(std::vector<std::string> arguments,
                 std::map<std::string, std::optional<std::string>> const& environment,
                 std::string const& errors)
{
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    process_ = ::fork();
    if (process_ == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::dup2(ends[1], STDOUT_FILENO);
        ::dup2(::open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
        for (auto const& [name, value] : environment) {
            if (value)
                ::setenv(name.c_str(), value->c_str(), 1);
            else
                ::unsetenv(name.c_str());
        }
        ::execvp(pointers.front(), pointers.data());
        ::_exit(127);
    }
    ::close(ends[1]);
    output_ = ends[0];
}

Process::~Process()
{
    ::close(output_);
    if (status())
        return;
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
}

std::string Process::readLine() const
{
    std::string line;
    char c = 0;
    while (::read(output_, &c, 1) == 1 && c != '\n')
        line += c;
    return line;
}

std::string Process::readAll() const
{
    std::string all;
    char c = 0;
    while (::read(output_, &c, 1) == 1)
        all += c;
    return all;
}

std::optional<int> Process::status()
{
    int ended = 0;
    if (!status_ && ::waitpid(process_, &ended, WNOHANG) == process_)
        status_ = WIFEXITED(ended) ? WEXITSTATUS(ended) : 128 + WTERMSIG(ended);
    return status_;
}

bool Process::isResting() const
{
    std::error_code error;
    for (std::filesystem::directory_iterator thread("/proc/" + std::to_string(process_) + "/task", error),
         end;
         !error && thread != end; thread.increment(error)) {
        std::ifstream file(thread->path() / "stat");
        std::string name;
        char state = 0;
        std::getline(file, name, ')') >> state;
        if (state == 'R' || state == 'D')
            return false;
    }
    return true;
}

double Process::processorTime() const
{
    constexpr int fieldsBefore = 11; // between the name's parenthesis and the user time
    std::ifstream file("/proc/" + std::to_string(process_) + "/stat");
    std::string text;
    std::getline(file, text, ')');
    for (int i = 0; i < fieldsBefore; ++i)
        file >> text;
    long user = 0;
    long system = 0;
    file >> user >> system;
    return static_cast<double>(user + system) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}
