#pragma once

#include <QAbstractNativeEventFilter>
#include <QTimer>
#include <QWindow>
#include <functional>

namespace desktop {

// Notices that the window of the open dialog is taken off the screen by somebody else: destroyed,
// or unmapped other than by a window manager that minimises it. Only X11 lets anybody do that.
class WindowWatch : public QAbstractNativeEventFilter {
 public:
  // `gone` is called from Qt's event loop, once for each window that is watched.
  explicit WindowWatch(std::function<void()> gone);
  ~WindowWatch() override;

  // From now on it is about this window; none if 0.
  void Watch(WId window) { watched_ = window; }

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

 private:
  void CheckUnmapped();
  void TellGone();

  std::function<void()> gone_;
  WId watched_ = 0;
  QTimer check_;  // runs from an unmapping until its cause is known
};

}  // namespace desktop
