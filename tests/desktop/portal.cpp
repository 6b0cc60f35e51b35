// The desktop's settings portal: desktop_portal FILE. The file has a section for each group of
// settings. It is read at every question, and when it is written anew the portal tells that
// something has changed. If it says that the portal is silent, nothing is answered. Says "ready"
// when it can be asked.

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QFileSystemWatcher>
#include <QSettings>
#include <cstdio>

namespace {

struct Colour {
  double red, green, blue;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Colour& colour) {
  argument.beginStructure();
  argument << colour.red << colour.green << colour.blue;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Colour&) { return argument; }

// As the portal's users expect that setting.
QVariant Typed(const QString& key, const QVariant& text) {
  const QStringList parts = text.toStringList();
  if (key == QLatin1String("accent-color") && parts.size() == 3) {
    return QVariant::fromValue(
        Colour{parts[0].toDouble(), parts[1].toDouble(), parts[2].toDouble()});
  }
  return key == QLatin1String("font-name") ? text : QVariant::fromValue(text.toUInt());
}

class Portal : public QDBusVirtualObject {
 public:
  explicit Portal(const QString& file) : file_(file), watch_({file}) {
    connect(&watch_, &QFileSystemWatcher::fileChanged, this, [] {
      QDBusMessage changed = QDBusMessage::createSignal(
          QStringLiteral("/org/freedesktop/portal/desktop"),
          QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
      changed << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme")
              << QVariant::fromValue(QDBusVariant(0U));
      QDBusConnection::sessionBus().send(changed);
    });
  }

  QString introspect(const QString&) const override { return {}; }

  // The portal answers with a variant in a variant.
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    const QSettings settings(file_, QSettings::IniFormat);
    const QString key = message.arguments().value(1).toString();
    const QVariant text = settings.value(message.arguments().value(0).toString() + '/' + key);
    if (message.member() != QLatin1String("Read") || !text.isValid()) return false;
    const QDBusVariant answer(QVariant::fromValue(QDBusVariant(Typed(key, text))));
    if (!settings.contains("silent")) bus.send(message.createReply(QVariant::fromValue(answer)));
    return true;
  }

 private:
  QString file_;
  QFileSystemWatcher watch_;
};

}  // namespace

Q_DECLARE_METATYPE(Colour)

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  qDBusRegisterMetaType<Colour>();
  Portal portal(QString::fromLocal8Bit(argv[argc - 1]));
  QDBusConnection bus = QDBusConnection::sessionBus();
  bus.registerVirtualObject(QStringLiteral("/org/freedesktop/portal/desktop"), &portal);
  if (!bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"))) return 1;
  std::puts("ready");
  std::fflush(stdout);
  return QCoreApplication::exec();
}
