#include <winsock2.h>
#include <ws2tcpip.h>

#include <algorithm>
#include <array>
#include <climits>
#include <utility>

#include "win32/error.h"
#include "win32/services/services.h"
#include "win32/wide_text.h"

namespace fiar::win32 {
namespace {

// The most that is read before other messages have their turn.
constexpr int kReadSize = 65536;

constexpr wchar_t kWindowClass[] = L"FiveInARowSocket";
constexpr UINT kSocketMessage = WM_APP;        ///< as WSAAsyncSelect() defines it
constexpr UINT kLookedUpMessage = WM_APP + 1;  ///< wParam: 0 or the error; lParam: the Lookup

// Loads the network library and makes the class of the sockets' windows, both for as long as the program
// runs.
bool prepareSockets(WNDPROC procedure) {
  WSADATA data{};
  const int error = WSAStartup(MAKEWORD(2, 2), &data);
  if (error != 0) throw Error("WSAStartup", static_cast<DWORD>(error));
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = procedure;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.lpszClassName = kWindowClass;
  require(RegisterClassExW(&windowClass), "RegisterClassExW");
  return true;
}

struct SocketTraits {
  using Handle = SOCKET;
  static Handle none() { return INVALID_SOCKET; }
  static void close(Handle handle) { closesocket(handle); }
};
using SocketHandle = UniqueHandle<SocketTraits>;

// The look-up of one name, which the system does in the background:
//
//   Connect()    --  start()  -->  the system looks the name up
//                                      |
//   lookedUp()  <--  message  --   done(), on a thread of the system's
//
// It cannot be stopped, so it keeps itself alive until it is done. If the socket has been closed meanwhile,
// its window is gone, and the message reaches nobody.
class Lookup : private OVERLAPPED {
public:
  Lookup(std::wstring host, int port, HWND window)
      : OVERLAPPED{}, host_(std::move(host)), port_(std::to_wstring(port)), window_(window) {}
  Lookup(const Lookup&) = delete;
  Lookup& operator=(const Lookup&) = delete;
  ~Lookup() {
    if (found_ != nullptr) FreeAddrInfoExW(found_);
  }

  const ADDRINFOEXW* found() const { return found_; }

  static void start(const std::shared_ptr<Lookup>& lookup) {
    lookup->self_ = lookup;
    ADDRINFOEXW hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_protocol = IPPROTO_TCP;
    const int result = GetAddrInfoExW(
        lookup->host_.c_str(), lookup->port_.c_str(), NS_DNS, nullptr, &hints, &lookup->found_, nullptr,
        lookup.get(), reinterpret_cast<LPLOOKUPSERVICE_COMPLETION_ROUTINE>(&Lookup::done), nullptr);
    if (result != WSA_IO_PENDING) done(static_cast<DWORD>(result), 0, lookup.get());
  }

private:
  static void CALLBACK done(DWORD error, DWORD /*length*/, OVERLAPPED* overlapped) {
    const std::shared_ptr<Lookup> lookup = std::move(static_cast<Lookup*>(overlapped)->self_);
    PostMessageW(lookup->window_, kLookedUpMessage, error, reinterpret_cast<LPARAM>(lookup.get()));
  }

  std::wstring host_;
  std::wstring port_;
  HWND window_;
  ADDRINFOEXW* found_ = nullptr;
  std::shared_ptr<Lookup> self_;  ///< null: done
};

class Win32Socket final : public SocketControl {
public:
  Win32Socket();

  void Connect() override;
  SocketState State() const override { return state_; }
  void SendData(std::string_view bytes) override;
  std::string GetData() override;
  void Close() override;

private:
  static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
  void lookedUp(int error);
  void connectToNext(int lastError);
  bool startConnecting(const ADDRINFOEXW& address);
  void socketEvent(int event, int error);
  void finishConnecting(int error);
  bool receive();
  void sendQueued();
  void dropConnection();
  void fail(int error);

  SocketState state_ = SocketState::Closed;
  // Made for each connection, so that no message of an earlier one is taken for one of this.
  WindowHandle window_;
  std::shared_ptr<Lookup> lookup_;            ///< of the connection being made; null: none
  const ADDRINFOEXW* nextAddress_ = nullptr;  ///< in lookup_
  SocketHandle socket_;
  std::string queued_;  ///< bytes to send, from sent_ on
  std::size_t sent_ = 0;
  std::string arrived_;
};

Win32Socket::Win32Socket() {
  [[maybe_unused]] static const bool prepared = prepareSockets(&windowProcedure);
}

void Win32Socket::Connect() {
  Close();
  state_ = SocketState::ResolvingHost;
  window_.reset(CreateWindowExW(0, kWindowClass, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                GetModuleHandleW(nullptr), nullptr));
  if (!window_) return fail(static_cast<int>(GetLastError()));
  SetWindowLongPtrW(window_.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  // The system takes an empty name for this computer's.
  if (RemoteHost.empty()) return fail(WSAHOST_NOT_FOUND);
  // Nobody can listen on port 0, so an impossible port fails as an unused one does.
  const int port = RemotePort > 0 && RemotePort <= kHighestPort ? RemotePort : 0;
  lookup_ = std::make_shared<Lookup>(toWide(RemoteHost), port, window_.get());
  Lookup::start(lookup_);
}

void Win32Socket::SendData(std::string_view bytes) {
  if (state_ != SocketState::Connected) return;
  queued_ += bytes;
  sendQueued();
}

std::string Win32Socket::GetData() {
  return std::exchange(arrived_, {});
}

void Win32Socket::Close() {
  dropConnection();
  arrived_.clear();
  state_ = SocketState::Closed;
}

LRESULT CALLBACK Win32Socket::windowProcedure(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam) noexcept {
  auto* const control = reinterpret_cast<Win32Socket*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (control == nullptr) return DefWindowProcW(window, message, wParam, lParam);
  if (message == kLookedUpMessage) {
    const bool current = lParam == reinterpret_cast<LPARAM>(control->lookup_.get());
    if (current) control->lookedUp(static_cast<int>(wParam));
    return 0;
  }
  if (message == kSocketMessage) {
    // An address that was given up may have left a message behind.
    const bool current = control->socket_ && control->socket_.get() == static_cast<SOCKET>(wParam);
    if (current) control->socketEvent(WSAGETSELECTEVENT(lParam), WSAGETSELECTERROR(lParam));
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

void Win32Socket::lookedUp(int error) {
  if (error != 0) return fail(error);
  state_ = SocketState::HostResolved;
  nextAddress_ = lookup_->found();
  connectToNext(WSAHOST_NOT_FOUND);
}

void Win32Socket::connectToNext(int lastError) {
  while (nextAddress_ != nullptr) {
    const ADDRINFOEXW& address = *nextAddress_;
    // Some headers misspell the name of the type that this points to, and of the routine's above.
    nextAddress_ = reinterpret_cast<const ADDRINFOEXW*>(address.ai_next);
    if (startConnecting(address)) return;
    lastError = WSAGetLastError();
  }
  fail(lastError);
}

bool Win32Socket::startConnecting(const ADDRINFOEXW& address) {
  state_ = SocketState::Connecting;
  socket_.reset(WSASocketW(address.ai_family, address.ai_socktype, address.ai_protocol, nullptr, 0,
                           WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT));
  if (!socket_) return false;
  // This makes the socket non-blocking as well.
  if (WSAAsyncSelect(socket_.get(), window_.get(), kSocketMessage,
                     FD_CONNECT | FD_READ | FD_WRITE | FD_CLOSE) != 0) {
    return false;
  }
  return connect(socket_.get(), address.ai_addr, static_cast<int>(address.ai_addrlen)) == 0 ||
         WSAGetLastError() == WSAEWOULDBLOCK;
}

void Win32Socket::socketEvent(int event, int error) {
  if (event == FD_CONNECT) return finishConnecting(error);
  if (state_ != SocketState::Connected) return;
  if (error != 0) return fail(error);
  if (event == FD_WRITE) return sendQueued();
  // The end is announced once, data ahead of it or not, so from then on all that is left is read.
  bool more = receive();
  while (more && event == FD_CLOSE && state_ == SocketState::Connected) more = receive();
}

void Win32Socket::finishConnecting(int error) {
  if (error != 0) return connectToNext(error);
  lookup_.reset();
  nextAddress_ = nullptr;
  // Short lines that the other side waits for must not wait for one another.
  const BOOL on = TRUE;
  setsockopt(socket_.get(), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on);
  state_ = SocketState::Connected;
  if (OnConnect) OnConnect();
}

// Reads what is there, at most kReadSize bytes; whether there was any.
bool Win32Socket::receive() {
  std::array<char, kReadSize> buffer{};
  const int length = recv(socket_.get(), buffer.data(), kReadSize, 0);
  if (length == SOCKET_ERROR) {
    const int error = WSAGetLastError();
    if (error != WSAEWOULDBLOCK) fail(error);
    return false;
  }
  if (length == 0) {
    dropConnection();
    state_ = SocketState::Closing;
    return false;
  }
  arrived_.append(buffer.data(), static_cast<std::size_t>(length));
  if (OnDataArrival) OnDataArrival();
  return true;
}

void Win32Socket::sendQueued() {
  while (sent_ < queued_.size()) {
    const auto rest = static_cast<int>(std::min<std::size_t>(queued_.size() - sent_, INT_MAX));
    const int length = send(socket_.get(), queued_.data() + sent_, rest, 0);
    if (length == SOCKET_ERROR) {
      const int error = WSAGetLastError();
      if (error != WSAEWOULDBLOCK) fail(error);
      return;
    }
    sent_ += static_cast<std::size_t>(length);
  }
  queued_.clear();
  sent_ = 0;
}

// Lets go of everything but the state and what has arrived.
void Win32Socket::dropConnection() {
  lookup_.reset();
  nextAddress_ = nullptr;
  socket_.reset();
  window_.reset();
  queued_.clear();
  sent_ = 0;
}

void Win32Socket::fail(int error) {
  dropConnection();
  state_ = SocketState::Error;
  if (OnError) OnError(errorText(static_cast<DWORD>(error)));
}

}  // namespace

std::unique_ptr<SocketControl> newSocket() {
  return std::make_unique<Win32Socket>();
}

}  // namespace fiar::win32
