#include "platform/posix/posix_events.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <utility>
#include <vector>

namespace fiar {
namespace {

// Longer waits are cut to a day; nobody waits that long, and the system's limits are far.
constexpr double kLongestWait = 86400;

timespec toTimespec(double seconds) {
  const double limited = seconds > 0 ? std::min(seconds, kLongestWait) : 0;
  const double whole = std::floor(limited);
  return {.tv_sec = static_cast<std::time_t>(whole), .tv_nsec = static_cast<long>((limited - whole) * 1e9)};
}

}  // namespace

void PosixEvents::watch(int descriptor, short events, Callback callback) {
  watches_[descriptor] = {.events = events,
                          .callback = std::make_shared<const Callback>(std::move(callback))};
}

void PosixEvents::unwatch(int descriptor) {
  watches_.erase(descriptor);
}

void PosixEvents::process() {
  deliver({});
}

void PosixEvents::waitAndProcess(double seconds) {
  deliver(toTimespec(seconds));
}

void PosixEvents::deliver(const timespec& limit) {
  // Callbacks may change the watches or deliver events themselves, so this works on a copy and looks at each
  // watch again before it calls.
  std::vector<pollfd> polled;
  std::vector<std::shared_ptr<const Callback>> callbacks;
  for (const auto& [descriptor, watch] : watches_) {
    polled.push_back({.fd = descriptor, .events = watch.events, .revents = 0});
    callbacks.push_back(watch.callback);
  }
  if (ppoll(polled.data(), polled.size(), &limit, nullptr) <= 0) return;
  for (std::size_t i = 0; i < polled.size(); ++i) {
    if (polled[i].revents == 0) continue;
    const auto current = watches_.find(polled[i].fd);
    const bool unchanged = current != watches_.end() && current->second.callback == callbacks[i];
    if (unchanged) (*callbacks[i])(polled[i].revents);
  }
}

}  // namespace fiar
