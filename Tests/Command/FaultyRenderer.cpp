// With OpenGLRenderer's own objects a renderer module whose driver fails as the environment variable
// SG_FAULTS says, and whose clock tells the same on every machine.
//
// The faults, with commas between: ACT@CALL or ACT@CALL:N, where CALL is "finish" or "read" and N counts the
// process's calls from 1; without N it is all of them. See misbehave() and spoil(). slow@ and stall@ a
// technique and none@program are of the driver as a whole.

#include "Tests/Frame/Detour.h"
#include "Utilities/Strings.h"
#include "Utilities/Timer.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

namespace {

struct Fault {
    std::string act;
    std::string call;
    int number = 0; ///< 0 for all
};

std::vector<Fault> faults()
{
    std::vector<Fault> list;
    char const* const text = std::getenv("SG_FAULTS");
    for (std::string const& item : string_split(text ? text : "", ',')) {
        std::vector<std::string> const parts = string_split(item, '@');
        if (parts.size() != 2)
            continue;
        std::vector<std::string> const call = string_split(parts[1], ':');
        list.push_back({parts[0], call[0], call.size() > 1 ? std::stoi(call[1]) : 0});
    }
    return list;
}

/// Four surfaces are enough for the scene. Then the plain technique makes 50 frames a second, and each other
/// is faster.
class ScriptedClock {
public:
    enum Technique { plain, buffers, program };

    void use(Technique technique) { technique_ = std::max(technique_, technique); }
    void makeSlow(Technique technique, int milliseconds) { costs_[technique] = milliseconds; }

    void finishFrame()
    {
        constexpr int framesOfGrowing = 10;
        constexpr int quick = 5;
        constexpr int thousand = 1000;
        now_ += thousand * (++frames_ <= framesOfGrowing ? quick : costs_[technique_]);
        technique_ = plain;
    }

    [[nodiscard]] std::int64_t now() const { return now_; }

private:
    int costs_[3] = {20, 15, 10}; // milliseconds
    Technique technique_ = plain;
    int frames_ = 0;
    std::int64_t now_ = 0;
};

class ScriptedTimer : public Timer {
public:
    explicit ScriptedTimer(ScriptedClock const& clock) : clock_(clock) {}
    Timestamp now() override { return {clock_.now()}; }

private:
    ScriptedClock const& clock_;
};

class FaultyDriver {
public:
    FaultyDriver()
    {
        driver = this;
        TimerFactory::setMaker([this] { return smart_ptr<Timer>(make_smart<ScriptedTimer>(clock_)); });
        RogueSingleton<Timer, TimerFactory>::reset();
        for (Fault const& fault : faults_)
            slowDown(fault);
    }
    FaultyDriver(FaultyDriver const&) = delete;
    FaultyDriver& operator=(FaultyDriver const&) = delete;
    ~FaultyDriver()
    {
        TimerFactory::setMaker({});
        RogueSingleton<Timer, TimerFactory>::reset();
        driver = nullptr;
    }

private:
    using Bytes = std::vector<unsigned char>;

    [[nodiscard]] bool has(std::string const& act) const
    {
        return std::ranges::any_of(faults_, [&](Fault const& fault) { return fault.act == act; });
    }

    void slowDown(Fault const& fault)
    {
        constexpr int slow = 40;
        constexpr int tooSlow = 1001;
        auto const technique = fault.call == "program" ? ScriptedClock::program : ScriptedClock::buffers;
        if (fault.act == "slow")
            clock_.makeSlow(technique, slow);
        if (fault.act == "stall")
            clock_.makeSlow(technique, tooSlow);
    }

    /// Carries out what is due at a call.
    template <typename Act>
    void at(std::string const& call, int number, Act const& act) const
    {
        for (Fault const& fault : faults_)
            if (fault.call == call && (fault.number == 0 || fault.number == number))
                act(fault.act);
    }

    static void misbehave(std::string const& act)
    {
        constexpr int ownStatus = 3;
        if (act == "crash") {
            std::signal(SIGSEGV, SIG_DFL); // whatever a sanitizer makes of it
            std::raise(SIGSEGV);
        } else if (act == "kill") {
            std::raise(SIGKILL);
        } else if (act == "hang") {
            while (true)
                ::pause();
        } else if (act == "doze") {
            std::this_thread::sleep_for(std::chrono::milliseconds(800));
        } else if (act == "exit" || act == "noise") {
            std::string const words = "driver: no hope\n";
            [[maybe_unused]] auto const written = ::write(STDERR_FILENO, words.data(), words.size());
            if (act == "exit")
                ::_exit(ownStatus);
        }
    }

    void spoil(std::string const& act, Bytes& pixels)
    {
        if (act == "black")
            std::ranges::fill(pixels, 0);
        else if (act == "white")
            std::ranges::fill(pixels, 255);
        else if (act == "repeat") // what was read first
            pixels = firstPicture_;
        else if (act == "shift") // by a quarter of the picture
            std::ranges::rotate(pixels, pixels.begin() + static_cast<std::ptrdiff_t>(pixels.size() / 4));
    }

    static void finish()
    {
        ++driver->finishes_;
        driver->at("finish", driver->finishes_, misbehave);
        driver->finish_.real()();
        driver->clock_.finishFrame();
    }

    static void readPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type,
                           void* data)
    {
        int const number = ++driver->reads_;
        driver->at("read", number, misbehave);
        driver->readPixels_.real()(x, y, width, height, format, type, data);
        auto* const bytes = static_cast<unsigned char*>(data);
        Bytes pixels(bytes, bytes + static_cast<std::ptrdiff_t>(width) * height * 4);
        if (number == 1)
            driver->firstPicture_ = pixels;
        driver->at("read", number, [&](std::string const& act) { driver->spoil(act, pixels); });
        std::ranges::copy(pixels, bytes);
    }

    static void bindBuffer(GLenum target, GLuint buffer)
    {
        if (buffer != 0)
            driver->clock_.use(ScriptedClock::buffers);
        driver->bindBuffer_.real()(target, buffer);
    }

    static void bindProgram(GLenum target, GLuint program)
    {
        if (program != 0)
            driver->clock_.use(ScriptedClock::program);
        driver->bindProgram_.real()(target, program);
    }

    static void getProgram(GLenum target, GLenum name, GLint* value)
    {
        driver->getProgram_.real()(target, name, value);
        if (name == GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB && driver->has("none"))
            *value = 0;
    }

    static FaultyDriver* driver;

    std::vector<Fault> faults_ = faults();
    ScriptedClock clock_;
    int finishes_ = 0;
    int reads_ = 0;
    Bytes firstPicture_;
    Detour<PFNGLFINISHPROC> finish_{"glFinish", epoxy_glFinish, &finish};
    Detour<PFNGLREADPIXELSPROC> readPixels_{"glReadPixels", epoxy_glReadPixels, &readPixels};
    Detour<PFNGLBINDBUFFERARBPROC> bindBuffer_{"glBindBufferARB", epoxy_glBindBufferARB, &bindBuffer};
    Detour<PFNGLBINDPROGRAMARBPROC> bindProgram_{"glBindProgramARB", epoxy_glBindProgramARB, &bindProgram};
    Detour<PFNGLGETPROGRAMIVARBPROC> getProgram_{"glGetProgramivARB", epoxy_glGetProgramivARB, &getProgram};
};

FaultyDriver* FaultyDriver::driver = nullptr;

FaultyDriver const faultyDriver;

} // namespace
