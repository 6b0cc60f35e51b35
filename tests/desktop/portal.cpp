// The desktop's settings portal with one setting, the colour scheme: desktop_portal SCHEME. Where
// that is no number the portal never answers. Says "ready" when it can be asked.

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <cstdio>

namespace {

class Portal : public QDBusVirtualObject {
 public:
  explicit Portal(const QString& scheme) : scheme_(scheme.toUInt(&answers_)) {}

  QString introspect(const QString&) const override { return {}; }

  // The portal answers with a variant in a variant.
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    const QVariantList setting{QStringLiteral("org.freedesktop.appearance"),
                               QStringLiteral("color-scheme")};
    if (message.member() != QLatin1String("Read") || message.arguments() != setting) return false;
    const QDBusVariant answer(QVariant::fromValue(QDBusVariant(scheme_)));
    if (answers_) bus.send(message.createReply(QVariant::fromValue(answer)));
    return true;
  }

 private:
  bool answers_ = false;
  uint scheme_;
};

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  Portal portal(QString::fromLocal8Bit(argv[argc - 1]));
  QDBusConnection bus = QDBusConnection::sessionBus();
  bus.registerVirtualObject(QStringLiteral("/org/freedesktop/portal/desktop"), &portal);
  if (!bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"))) return 1;
  std::puts("ready");
  std::fflush(stdout);
  return QCoreApplication::exec();
}
