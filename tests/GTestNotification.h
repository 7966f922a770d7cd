// GoogleTest's Notification over a Win32 event, given to it ahead of its own
// headers: the Win32 thread model has no std::mutex for the one it carries.
#pragma once
#include <windows.h>

namespace testing::internal {
class Notification {
  public:
    Notification() : event_(CreateEventA(nullptr, TRUE, FALSE, nullptr)) {}
    ~Notification() { CloseHandle(event_); }
    void Notify() { SetEvent(event_); }
    void WaitForNotification() { WaitForSingleObject(event_, INFINITE); }

  private:
    HANDLE event_;
};
}  // namespace testing::internal
