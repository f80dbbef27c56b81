#include "Tests/Window/FakeUser.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <poll.h>

#include <chrono>
#include <stdexcept>

namespace {

constexpr long dropProtocol = 5;

/// A window of its own that drags come from.
class Source {
public:
    explicit Source(Display* display)
        : display_(display),
          window_(XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0))
    {
    }
    Source(Source const&) = delete;
    Source& operator=(Source const&) = delete;
    ~Source() { XDestroyWindow(display_, window_); }

    [[nodiscard]] Window window() const { return window_; }

private:
    Display* display_;
    Window window_;
};

std::string uriList(std::vector<std::filesystem::path> const& files)
{
    std::string list;
    for (std::filesystem::path const& file : files)
        list += "file://" + file.string() + "\r\n";
    return list;
}

} // namespace

void FakeUser::DisplayEnd::operator()(_XDisplay* display) const
{
    XCloseDisplay(display);
}

FakeUser::FakeUser(std::string const& display) : display_(XOpenDisplay(display.c_str()))
{
    // A window may go while it is looked at.
    XSetErrorHandler([](_XDisplay*, XErrorEvent*) { return 0; });
    int ignored = 0;
    if (!display_ || !XTestQueryExtension(display_.get(), &ignored, &ignored, &ignored, &ignored))
        throw std::runtime_error("no display for fake input: " + display);
}

void FakeUser::setResources(std::string const& text) const
{
    XChangeProperty(display_.get(), DefaultRootWindow(display_.get()), XA_RESOURCE_MANAGER, XA_STRING, 8,
                    PropModeReplace, reinterpret_cast<unsigned char const*>(text.data()),
                    static_cast<int>(text.size()));
    XSync(display_.get(), False);
}

bool FakeUser::findWindow()
{
    Window root = None;
    Window parent = None;
    Window* children = nullptr;
    unsigned count = 0;
    XQueryTree(display_.get(), DefaultRootWindow(display_.get()), &root, &parent, &children, &count);
    window_ = None;
    for (unsigned i = 0; i < count && window_ == None; ++i) {
        window_ = children[i];
        if (title().empty() || !place().isVisible)
            window_ = None;
    }
    XFree(children);
    if (window_ == None)
        return false;
    XSetInputFocus(display_.get(), window_, RevertToParent, CurrentTime);
    XSync(display_.get(), False);
    return true;
}

std::string FakeUser::title() const
{
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    constexpr long most = 1024;
    XGetWindowProperty(display_.get(), window_, atom("_NET_WM_NAME"), 0, most, False, atom("UTF8_STRING"),
                       &type, &format, &count, &left, &data);
    std::string text = data ? reinterpret_cast<char const*>(data) : "";
    XFree(data);
    return text;
}

FakeUser::Place FakeUser::place() const
{
    XWindowAttributes found{};
    XGetWindowAttributes(display_.get(), window_, &found);
    return {found.x, found.y, found.width, found.height, found.map_state == IsViewable};
}

sgview::PictureSize FakeUser::size() const
{
    Place const found = place();
    return {found.width, found.height};
}

void FakeUser::resize(sgview::PictureSize size) const
{
    XResizeWindow(display_.get(), window_, static_cast<unsigned>(size.width),
                  static_cast<unsigned>(size.height));
    XSync(display_.get(), False);
}

void FakeUser::hide() const
{
    XUnmapWindow(display_.get(), window_);
    XSync(display_.get(), False);
}

void FakeUser::show() const
{
    XMapWindow(display_.get(), window_);
    XSync(display_.get(), False);
    XSetInputFocus(display_.get(), window_, RevertToParent, CurrentTime);
    XSync(display_.get(), False);
}

void FakeUser::close() const
{
    sendMessage(window_, "WM_PROTOCOLS", {static_cast<long>(atom("WM_DELETE_WINDOW")), CurrentTime});
}

void FakeUser::type(unsigned long key, bool shift) const
{
    KeyCode const shiftCode = XKeysymToKeycode(display_.get(), XK_Shift_L);
    KeyCode const code = XKeysymToKeycode(display_.get(), key);
    if (shift)
        XTestFakeKeyEvent(display_.get(), shiftCode, True, CurrentTime);
    XTestFakeKeyEvent(display_.get(), code, True, CurrentTime);
    XTestFakeKeyEvent(display_.get(), code, False, CurrentTime);
    if (shift)
        XTestFakeKeyEvent(display_.get(), shiftCode, False, CurrentTime);
    XSync(display_.get(), False);
}

int FakeUser::hold(unsigned long key, int times) const
{
    Display* const display = display_.get();
    unsigned const code = XKeysymToKeycode(display, key);
    int count = 0;
    auto const countPresses = [&] {
        XEvent event;
        while (XCheckWindowEvent(display, window_, KeyPressMask, &event))
            count += event.xkey.keycode == code ? 1 : 0;
    };
    XSelectInput(display, window_, KeyPressMask);
    XTestFakeKeyEvent(display, code, True, CurrentTime);
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(40);
    while (count < times && std::chrono::steady_clock::now() < deadline) {
        XSync(display, False);
        countPresses();
        pollfd watched{ConnectionNumber(display), POLLIN, 0};
        ::poll(&watched, 1, 20);
    }
    XTestFakeKeyEvent(display, code, False, CurrentTime);
    XSync(display, False);
    countPresses();
    XSelectInput(display, window_, NoEventMask);
    return count;
}

void FakeUser::moveTo(int x, int y) const
{
    Place const at = place();
    XTestFakeMotionEvent(display_.get(), -1, at.x + x, at.y + y, CurrentTime);
    XSync(display_.get(), False);
}

void FakeUser::press(unsigned button) const
{
    XTestFakeButtonEvent(display_.get(), button, True, CurrentTime);
    XSync(display_.get(), False);
}

void FakeUser::release(unsigned button) const
{
    XTestFakeButtonEvent(display_.get(), button, False, CurrentTime);
    XSync(display_.get(), False);
}

void FakeUser::click(unsigned button) const
{
    press(button);
    release(button);
}

void FakeUser::drag(unsigned button, int fromX, int fromY, int toX, int toY) const
{
    moveTo(fromX, fromY);
    press(button);
    moveTo((fromX + toX) / 2, (fromY + toY) / 2);
    moveTo(toX, toY);
    release(button);
}

sgview::Picture FakeUser::look() const
{
    Place const at = place();
    sgview::Picture picture({at.width, at.height});
    XImage* const image = XGetImage(display_.get(), window_, 0, 0, static_cast<unsigned>(at.width),
                                    static_cast<unsigned>(at.height), AllPlanes, ZPixmap);
    if (!image)
        throw std::runtime_error("the window cannot be looked at");
    auto* out = picture.pixels.data();
    for (int y = 0; y < at.height; ++y)
        for (int x = 0; x < at.width; ++x, out += 4) {
            unsigned long const pixel = XGetPixel(image, x, y);
            out[0] = static_cast<std::uint8_t>(pixel >> 16);
            out[1] = static_cast<std::uint8_t>(pixel >> 8);
            out[2] = static_cast<std::uint8_t>(pixel);
            out[3] = 255;
        }
    XDestroyImage(image);
    return picture;
}

bool FakeUser::drop(std::vector<std::filesystem::path> const& files) const
{
    Display* const display = display_.get();
    Source const source(display);
    XSetSelectionOwner(display, atom("XdndSelection"), source.window(), CurrentTime);
    Place const at = place();
    long const middle = (static_cast<long>(at.x + at.width / 2) << 16) | (at.y + at.height / 2);
    auto const from = static_cast<long>(source.window());
    sendMessage(window_, "XdndEnter", {from, dropProtocol << 24, static_cast<long>(atom("text/uri-list"))});
    sendMessage(window_, "XdndPosition",
                {from, 0, middle, CurrentTime, static_cast<long>(atom("XdndActionCopy"))});
    return serveDrop(source.window(), uriList(files));
}

bool FakeUser::serveDrop(unsigned long source, std::string const& list) const
{
    Display* const display = display_.get();
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (std::chrono::steady_clock::now() < deadline) {
        if (XPending(display) == 0) {
            pollfd watched{ConnectionNumber(display), POLLIN, 0};
            ::poll(&watched, 1, 50);
            continue;
        }
        XEvent event;
        XNextEvent(display, &event);
        if (event.type == SelectionRequest) {
            XSelectionRequestEvent const& request = event.xselectionrequest;
            answerRequest(request.requestor, request.property, request.target, list);
        } else if (event.type == ClientMessage && event.xclient.message_type == atom("XdndStatus")) {
            if ((event.xclient.data.l[1] & 1) == 0)
                return false;
            sendMessage(window_, "XdndDrop", {static_cast<long>(source), 0, CurrentTime});
        } else if (event.type == ClientMessage && event.xclient.message_type == atom("XdndFinished")) {
            return true;
        }
    }
    return false;
}

void FakeUser::answerRequest(unsigned long requestor, unsigned long property, unsigned long target,
                             std::string const& list) const
{
    XChangeProperty(display_.get(), requestor, property, target, 8, PropModeReplace,
                    reinterpret_cast<unsigned char const*>(list.data()), static_cast<int>(list.size()));
    XEvent answer{};
    answer.xselection.type = SelectionNotify;
    answer.xselection.requestor = requestor;
    answer.xselection.selection = atom("XdndSelection");
    answer.xselection.target = target;
    answer.xselection.property = property;
    XSendEvent(display_.get(), requestor, False, 0, &answer);
    XFlush(display_.get());
}

unsigned long FakeUser::atom(char const* name) const
{
    return XInternAtom(display_.get(), name, False);
}

void FakeUser::sendMessage(unsigned long target, char const* type, std::vector<long> const& data) const
{
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = target;
    event.xclient.message_type = atom(type);
    event.xclient.format = 32;
    for (std::size_t i = 0; i < data.size(); ++i)
        event.xclient.data.l[i] = data[i];
    XSendEvent(display_.get(), target, False, 0, &event);
    XFlush(display_.get());
}
