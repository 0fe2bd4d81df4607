#include "platform/posix/posix_socket.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <system_error>
#include <thread>
#include <utility>

namespace fiar {
namespace {

// The most that is read before other events have their turn.
constexpr std::size_t kReadSize = 65536;
constexpr int kHighestPort = 65535;

bool wouldBlock(int error) {
  return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

std::string describe(int error) {
  return std::generic_category().message(error);
}

}  // namespace

// The look-up of one name. Shared by the control and the thread, so that neither waits for the other's end.
class PosixSocket::Lookup {
public:
  Lookup(std::string host, std::string port)
      : host_(std::move(host)), port_(std::move(port)), doneMark_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}
  Lookup(const Lookup&) = delete;
  Lookup& operator=(const Lookup&) = delete;
  Lookup(Lookup&&) = delete;
  Lookup& operator=(Lookup&&) = delete;
  ~Lookup() {
    if (found_ != nullptr) freeaddrinfo(found_);
    if (doneMark_ >= 0) close(doneMark_);
  }

  /// Readable when the look-up is done; -1 where the system has no descriptor left.
  int doneMark() const { return doneMark_; }
  const addrinfo* found() const { return found_; }
  /// A getaddrinfo() result: 0 or an EAI number.
  int error() const { return error_; }

  void run() {
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    const int error = getaddrinfo(host_.c_str(), port_.c_str(), &hints, &found_);
    error_ = error;
    eventfd_write(doneMark_, 1);
  }

private:
  std::string host_;
  std::string port_;
  int doneMark_;
  addrinfo* found_ = nullptr;
  std::atomic<int> error_ = 0;  ///< written after found_, read before it
};

PosixSocket::~PosixSocket() {
  PosixSocket::Close();
}

void PosixSocket::Connect() {
  Close();
  state_ = SocketState::ResolvingHost;
  // Nobody can listen on port 0, so an impossible port fails as an unused one does.
  const int port = RemotePort > 0 && RemotePort <= kHighestPort ? RemotePort : 0;
  lookup_ = std::make_shared<Lookup>(toUtf8(RemoteHost), std::to_string(port));
  if (lookup_->doneMark() < 0) return fail(describe(errno));
  try {
    std::thread([lookup = lookup_] { lookup->run(); }).detach();
  } catch (const std::system_error& error) {
    return fail(error.code().message());
  }
  events_.watch(lookup_->doneMark(), POLLIN, [this](short) { lookedUp(); });
}

void PosixSocket::SendData(std::string_view bytes) {
  if (state_ != SocketState::Connected) return;
  queued_ += bytes;
  sendQueued();
}

std::string PosixSocket::GetData() {
  return std::exchange(arrived_, {});
}

void PosixSocket::Close() {
  dropConnection();
  arrived_.clear();
  state_ = SocketState::Closed;
}

void PosixSocket::lookedUp() {
  events_.unwatch(lookup_->doneMark());
  if (lookup_->error() != 0) return fail(gai_strerror(lookup_->error()));
  state_ = SocketState::HostResolved;
  nextAddress_ = lookup_->found();
  connectToNext(0);
}

void PosixSocket::connectToNext(int lastError) {
  while (nextAddress_ != nullptr) {
    const addrinfo& address = *std::exchange(nextAddress_, nextAddress_->ai_next);
    if (startConnecting(address)) return;
    lastError = errno;
  }
  fail(describe(lastError));
}

bool PosixSocket::startConnecting(const addrinfo& address) {
  descriptor_ =
      socket(address.ai_family, address.ai_socktype | SOCK_NONBLOCK | SOCK_CLOEXEC, address.ai_protocol);
  if (descriptor_ < 0) return false;
  state_ = SocketState::Connecting;
  if (connect(descriptor_, address.ai_addr, address.ai_addrlen) != 0 && errno != EINPROGRESS) {
    const int error = errno;
    close(std::exchange(descriptor_, -1));
    errno = error;
    return false;
  }
  events_.watch(descriptor_, POLLOUT, [this](short) { finishConnecting(); });
  return true;
}

void PosixSocket::finishConnecting() {
  int error = 0;
  socklen_t length = sizeof error;
  getsockopt(descriptor_, SOL_SOCKET, SO_ERROR, &error, &length);
  if (error != 0) {
    events_.unwatch(descriptor_);
    close(std::exchange(descriptor_, -1));
    return connectToNext(error);
  }
  lookup_.reset();
  nextAddress_ = nullptr;
  // Short lines that the other side waits for must not wait for one another.
  const int on = 1;
  setsockopt(descriptor_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  state_ = SocketState::Connected;
  watchConnection();
  if (OnConnect) OnConnect();
}

void PosixSocket::ready(short events) {
  if ((events & POLLOUT) != 0) sendQueued();
  const bool open = state_ == SocketState::Connected;
  if (open && (events & ~POLLOUT) != 0) receive();
}

void PosixSocket::receive() {
  std::array<char, kReadSize> buffer{};
  const ssize_t length = recv(descriptor_, buffer.data(), buffer.size(), 0);
  if (length < 0 && wouldBlock(errno)) return;
  if (length < 0) return fail(describe(errno));
  if (length == 0) {
    dropConnection();
    state_ = SocketState::Closing;
    return;
  }
  arrived_.append(buffer.data(), static_cast<std::size_t>(length));
  if (OnDataArrival) OnDataArrival();
}

void PosixSocket::sendQueued() {
  while (sent_ < queued_.size()) {
    const ssize_t length = send(descriptor_, queued_.data() + sent_, queued_.size() - sent_, MSG_NOSIGNAL);
    if (length < 0 && !wouldBlock(errno)) return fail(describe(errno));
    if (length < 0) break;
    sent_ += static_cast<std::size_t>(length);
  }
  if (sent_ == queued_.size()) {
    queued_.clear();
    sent_ = 0;
  }
  watchConnection();
}

void PosixSocket::watchConnection() {
  const short wanted = queued_.empty() ? POLLIN : POLLIN | POLLOUT;
  events_.watch(descriptor_, wanted, [this](short events) { ready(events); });
}

// Lets go of everything but the state and what has arrived.
void PosixSocket::dropConnection() {
  if (lookup_) events_.unwatch(lookup_->doneMark());
  lookup_.reset();
  nextAddress_ = nullptr;
  if (descriptor_ >= 0) {
    events_.unwatch(descriptor_);
    close(std::exchange(descriptor_, -1));
  }
  queued_.clear();
  sent_ = 0;
}

void PosixSocket::fail(std::string_view description) {
  dropConnection();
  state_ = SocketState::Error;
  if (OnError) OnError(fromUtf8(description));
}

}  // namespace fiar
