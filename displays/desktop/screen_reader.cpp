#include "displays/desktop/screen_reader.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QTimer>

#include "displays/desktop/session_bus.h"

namespace desktop {
namespace {

constexpr int kPatience = 333;  // milliseconds

bool IsInUse() {
  if (!HasSessionBus()) return false;
  QDBusMessage question = QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus",
                                                         "org.freedesktop.DBus.Properties", "Get");
  question << "org.a11y.Status"
           << "IsEnabled";
  question.setAutoStartService(false);
  const QDBusReply<QDBusVariant> reply =
      QDBusConnection::sessionBus().call(question, QDBus::Block, kPatience);
  return reply.isValid() && reply.value().variant().toBool();
}

}  // namespace

void AwaitScreenReader() {
  if (!IsInUse()) return;
  QTimer patience;
  patience.setSingleShot(true);
  patience.start(kPatience);
  while (!QAccessible::isActive() && patience.isActive()) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
}

}  // namespace desktop
