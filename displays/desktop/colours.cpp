#include "displays/desktop/colours.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QSettings>
#include <QStandardPaths>

#include "displays/desktop/session_bus.h"

namespace desktop {
namespace {

constexpr int kPortalPatience = 200;  // milliseconds
constexpr uint kPrefersDark = 1;

bool NamesDarkTheme(const QString& theme) {
  return theme.endsWith(QLatin1String("dark"), Qt::CaseInsensitive);
}

bool GtkSettingsSayDark() {
  const QString file = QStandardPaths::locate(QStandardPaths::GenericConfigLocation,
                                              QStringLiteral("gtk-3.0/settings.ini"));
  if (file.isEmpty()) return false;
  const QSettings settings(file, QSettings::IniFormat);
  return settings.value(QStringLiteral("Settings/gtk-application-prefer-dark-theme")).toBool() ||
         NamesDarkTheme(settings.value(QStringLiteral("Settings/gtk-theme-name")).toString());
}

// Asks the settings service that desktops have in common, but only if it runs already.
bool PortalSaysDark() {
  if (!HasSessionBus()) return false;
  const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected() || !bus.interface()->isServiceRegistered(service)) return false;
  QDBusMessage question = QDBusMessage::createMethodCall(
      service, QStringLiteral("/org/freedesktop/portal/desktop"),
      QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
  question << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme");
  QVariant reply = bus.call(question, QDBus::Block, kPortalPatience).arguments().value(0);
  while (reply.canConvert<QDBusVariant>()) reply = reply.value<QDBusVariant>().variant();
  return reply.toUInt() == kPrefersDark;
}

}  // namespace

bool DesktopPrefersDark() {
  if (QGuiApplication::palette().color(QPalette::Window).lightness() < 128) return false;
  const QString gtk_theme = qEnvironmentVariable("GTK_THEME");
  if (!gtk_theme.isEmpty()) return NamesDarkTheme(gtk_theme);
  return GtkSettingsSayDark() || PortalSaysDark();
}

QPalette DarkPalette() {
  const QColor window(0x2b, 0x2c, 0x2f);
  const QColor base(0x1f, 0x20, 0x22);
  const QColor text(0xee, 0xee, 0xee);
  const QColor faint(0x85, 0x86, 0x8a);
  const QColor accent(0x2f, 0x7d, 0xc8);
  QPalette palette(text, QColor(0x3a, 0x3b, 0x3f), QColor(0x50, 0x51, 0x55),
                   QColor(0x18, 0x18, 0x1a), QColor(0x60, 0x61, 0x65), text, Qt::white, base,
                   window);
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::PlaceholderText, faint);
  return palette;
}

}  // namespace desktop
