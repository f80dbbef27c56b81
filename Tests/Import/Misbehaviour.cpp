#include "Tests/Import/Misbehaviour.h"

#include "Tests/Import/SampleModel.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/Importer.h"
#include "Viewer/Process/WorkerProcess.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstring>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>

#include <sys/wait.h>
#include <unistd.h>

namespace sgview {

namespace {

using Files = std::filesystem::path;

Model crash(Files const&)
{
    ::raise(SIGSEGV);
    return {};
}

Model hang(Files const&)
{
    while (true)
        ::pause();
}

Model spin(Files const&)
{
    std::atomic<std::uint64_t> turns = 0;
    while (true)
        ++turns;
}

Model eatMemory(Files const&)
{
    constexpr std::size_t piece = std::size_t{16} << 20;
    std::vector<std::unique_ptr<char[]>> eaten;
    while (true) {
        eaten.push_back(std::make_unique<char[]>(piece));
        std::memset(eaten.back().get(), 1, piece);
    }
}

Model writeFile(Files const& file)
{
    std::ofstream stream(file.parent_path() / "written", std::ios::binary);
    stream << std::string(100000, 'x') << std::flush;
    return makeSampleModel();
}

Model startProcess(Files const& file)
{
    pid_t const child = ::fork();
    if (child == 0)
        while (true)
            ::pause();
    if (child < 0)
        throw ImportError(ImportFailure::broken, file.string(), "no further process");
    return makeSampleModel();
}

Model leaveEarly(Files const&)
{
    ::_exit(3);
}

Model sendNonsense(Files const&)
{
    std::array<char, 3> const nonsense{'?', '?', '.'};
    if (::write(workerDescriptor, nonsense.data(), nonsense.size()) < 0)
        ::_exit(1);
    ::_exit(0);
}

Model closeAndHang(Files const& file)
{
    ::close(workerDescriptor);
    return hang(file);
}

Model chatter(Files const&)
{
    for (int line = 0; line < 1000; ++line) {
        std::cout << "out " << line << std::endl;
        std::cerr << "error " << line << std::endl;
    }
    return makeSampleModel();
}

Model lie(Files const&)
{
    Model model = makeSampleModel();
    model.surfaces[0].facets[0] = 1000000;
    return model;
}

Model fail(Files const&)
{
    throw std::runtime_error("two\nlines");
}

} // namespace

Model importOrMisbehave(std::filesystem::path const& file, ImportOptions const& options, SourceFiles* sources)
{
    static std::map<std::string, Model (*)(Files const&)> const ways{
        {"crash.bad", crash},
        {"hang.bad", hang},
        {"spin.bad", spin},
        {"eat.bad", eatMemory},
        {"write.bad", writeFile},
        {"fork.bad", startProcess},
        {"leave.bad", leaveEarly},
        {"nonsense.bad", sendNonsense},
        {"close.bad", closeAndHang},
        {"chatter.bad", chatter},
        {"lie.bad", lie},
        {"fail.bad", fail},
    };
    auto const way = ways.find(file.filename().string());
    return way == ways.end() ? importModel(file, options, sources) : way->second(file);
}

} // namespace sgview
