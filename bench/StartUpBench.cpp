// Measures the time from starting a program to its first window on the X display, as someone
// waiting for it sees it: start_up_bench RUNS PROGRAM [ARGUMENT...]. Prints median, least and
// greatest.

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>
#include <xcb/xcb.h>

namespace
{

using Clock = std::chrono::steady_clock;
constexpr int kMostMilliseconds = 10'000;

struct Free
{
    void operator()(void* memory) const { std::free(memory); }
};

/// Waits until a window of a program is mapped on the display; false when it takes too long.
bool WaitForWindow(xcb_connection_t* display)
{
    auto const end = Clock::now() + std::chrono::milliseconds(kMostMilliseconds);
    while (Clock::now() < end) {
        std::unique_ptr<xcb_generic_event_t, Free> const event(xcb_poll_for_event(display));
        if (event == nullptr) {
            pollfd wait = {xcb_get_file_descriptor(display), POLLIN, 0};
            ::poll(&wait, 1, 100);
        } else if ((event->response_type & 0x7F) == XCB_MAP_NOTIFY) {
            return true;
        }
    }
    return false;
}

/// Milliseconds of one start, negative when no window came.
double MeasureStart(xcb_connection_t* display, char* const* arguments)
{
    auto const start = Clock::now();
    pid_t child = 0;
    if (::posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments, ::environ) != 0) {
        return -1;
    }
    bool const mapped = WaitForWindow(display);
    std::chrono::duration<double, std::milli> const taken = Clock::now() - start;
    ::kill(child, SIGTERM);
    ::waitpid(child, nullptr, 0);
    return mapped ? taken.count() : -1;
}

} // namespace

int main(int argc, char** argv)
{
    int const runs = argc > 2 ? std::atoi(argv[1]) : 0;
    auto* const display = xcb_connect(nullptr, nullptr);
    if (runs < 1 || xcb_connection_has_error(display) != 0) {
        std::fputs("usage: start_up_bench RUNS PROGRAM [ARGUMENT...], on an X display\n", stderr);
        return 2;
    }
    std::uint32_t const mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    auto const root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    xcb_change_window_attributes(display, root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(display);
    std::vector<double> times;
    for (int run = 0; run <= runs; ++run) {
        double const time = MeasureStart(display, argv + 2);
        if (time < 0) {
            std::fputs("no window came\n", stderr);
            return 1;
        }
        if (run > 0) { // the first one warms the caches
            times.push_back(time);
        }
        // Events of the window that goes must not be taken for the next one's.
        ::usleep(200'000);
        for (xcb_generic_event_t* event = nullptr;
             (event = xcb_poll_for_event(display)) != nullptr;) {
            std::free(event);
        }
    }
    std::sort(times.begin(), times.end());
    std::printf("start to mapped window: median %.0f ms, %.0f to %.0f, %d runs\n",
        times[times.size() / 2], times.front(), times.back(), runs);
    xcb_disconnect(display);
    return 0;
}
