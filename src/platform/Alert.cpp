#include "harmony/Alert.h"

#include <iostream>
#include <mutex>

namespace harmony {

namespace {

void WriteToStandardError(const TAlert& alert) {
  std::cerr << alert.messageText << ": " << alert.informativeText << '\n';
}

std::mutex& HandlerMutex() {
  static std::mutex mutex;
  return mutex;
}

TAlertHandler& Handler() {
  static TAlertHandler handler = &WriteToStandardError;
  return handler;
}

}  // namespace

TAlertHandler SetAlertHandler(TAlertHandler handler) {
  std::lock_guard<std::mutex> lock(HandlerMutex());
  TAlertHandler previous = std::move(Handler());
  Handler() = handler ? std::move(handler) : TAlertHandler(&WriteToStandardError);
  return previous;
}

void ShowAlert(const TAlert& alert) {
  TAlertHandler handler;
  {
    std::lock_guard<std::mutex> lock(HandlerMutex());
    handler = Handler();
  }
  handler(alert);
}

}  // namespace harmony
