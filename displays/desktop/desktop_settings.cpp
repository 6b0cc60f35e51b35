#include "displays/desktop/desktop_settings.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QRegularExpression>
#include <QSettings>
#include <QStandardPaths>
#include <QTimer>
#include <array>

#include "displays/desktop/session_bus.h"

namespace desktop {
namespace {

constexpr int kPortalPatience = 200;  // milliseconds
constexpr uint kPrefersDark = 1;

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";
constexpr const char* kPortalSettings = "org.freedesktop.portal.Settings";

// A theme goes by its name: "Adwaita-dark", "HighContrast", "HighContrastInverse".
void FollowTheme(const QString& theme, DesktopSettings& settings) {
  settings.high_contrast |= theme.startsWith(QLatin1String("HighContrast"), Qt::CaseInsensitive);
  for (const char* ending : {"dark", "inverse"}) {
    settings.dark |= theme.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
  }
}

// The families of a font as GTK writes it: "Noto Sans, Cantarell Bold 11".
QStringList FamiliesOf(QString font) {
  static const QRegularExpression style_and_size(
      QStringLiteral("(\\s+(Thin|Ultra-Light|Extra-Light|Light|Semi-Light|Book|Regular|Medium|"
                     "Semi-Bold|Demi-Bold|Bold|Extra-Bold|Ultra-Bold|Heavy|Black|Italic|Oblique|"
                     "Condensed|Semi-Condensed|[\\d.]+(px)?))*\\s*$"),
      QRegularExpression::CaseInsensitiveOption);
  QStringList families = font.remove(style_and_size).split(',', Qt::SkipEmptyParts);
  for (QString& family : families) family = family.trimmed();
  families.removeAll(QString());
  return families;
}

// A setting of GTK's programs, of the newest version that has it.
QVariant GtkSetting(const char* key) {
  for (const char* name : {"gtk-4.0/settings.ini", "gtk-3.0/settings.ini"}) {
    const QString file =
        QStandardPaths::locate(QStandardPaths::GenericConfigLocation, QLatin1String(name));
    if (file.isEmpty()) continue;
    QVariant value = QSettings(file, QSettings::IniFormat)
                         .value(QStringLiteral("Settings/") + QLatin1String(key));
    if (value.isValid()) return value;
  }
  return {};
}

void ReadGtkSettings(bool themes_too, DesktopSettings& settings) {
  // Qt reads what holds commas as a list.
  const QStringList font = GtkSetting("gtk-font-name").toStringList();
  settings.families = FamiliesOf(font.join(QLatin1Char(',')));
  if (!themes_too) return;
  settings.dark |= GtkSetting("gtk-application-prefer-dark-theme").toBool();
  FollowTheme(GtkSetting("gtk-theme-name").toString(), settings);
}

// The settings service that desktops have in common, if it runs already.
bool HasPortal() {
  if (!HasSessionBus()) return false;
  const QDBusConnection bus = QDBusConnection::sessionBus();
  return bus.isConnected() && bus.interface()->isServiceRegistered(QLatin1String(kPortal));
}

// One question to the portal, which replies with a variant in a variant, if at all.
class PortalSetting {
 public:
  PortalSetting(const char* group, const char* key) : reply_(Ask(group, key)) {}

  QVariant Value() {
    reply_.waitForFinished();
    QVariant value = reply_.reply().arguments().value(0);
    if (reply_.isError()) return {};
    while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
    return value;
  }

 private:
  static QDBusPendingCall Ask(const char* group, const char* key) {
    QDBusMessage question =
        QDBusMessage::createMethodCall(QLatin1String(kPortal), QLatin1String(kPortalPath),
                                       QLatin1String(kPortalSettings), QStringLiteral("Read"));
    question << QString::fromLatin1(group) << QString::fromLatin1(key);
    return QDBusConnection::sessionBus().asyncCall(question, kPortalPatience);
  }

  QDBusPendingCall reply_;
};

// Red, green and blue from 0 to 1. Other numbers mean that there is none.
QColor ColourFrom(const QVariant& value) {
  if (!value.canConvert<QDBusArgument>()) return {};
  const auto argument = value.value<QDBusArgument>();
  if (argument.currentSignature() != QLatin1String("(ddd)")) return {};
  std::array<double, 3> part{};
  argument.beginStructure();
  argument >> part[0] >> part[1] >> part[2];
  argument.endStructure();
  for (const double share : part) {
    if (!(share >= 0 && share <= 1)) return {};
  }
  return QColor::fromRgbF(static_cast<float>(part[0]), static_cast<float>(part[1]),
                          static_cast<float>(part[2]));
}

// All is asked at once, so that a portal that is silent is waited for once.
void ReadPortal(bool themes_too, DesktopSettings& settings) {
  if (!HasPortal()) return;
  constexpr const char* kAppearance = "org.freedesktop.appearance";
  PortalSetting scheme(kAppearance, "color-scheme");
  PortalSetting contrast(kAppearance, "contrast");
  PortalSetting accent(kAppearance, "accent-color");
  PortalSetting font("org.gnome.desktop.interface", "font-name");
  settings.accent = ColourFrom(accent.Value());
  if (const QStringList families = FamiliesOf(font.Value().toString()); !families.isEmpty()) {
    settings.families = families;
  }
  if (!themes_too) return;
  settings.dark |= scheme.Value().toUInt() == kPrefersDark;
  settings.high_contrast |= contrast.Value().toUInt() == 1;
}

}  // namespace

DesktopSettings ReadDesktopSettings() {
  DesktopSettings settings;
  const QString named = qEnvironmentVariable("GTK_THEME");
  FollowTheme(named, settings);
  ReadGtkSettings(named.isEmpty(), settings);
  ReadPortal(named.isEmpty(), settings);
  // There Qt reads the font itself, and what is set for GTK's programs is another one.
  if (qEnvironmentVariable("XDG_CURRENT_DESKTOP").contains(QLatin1String("KDE"))) {
    settings.families.clear();
  }
  return settings;
}

// Settings that belong together are told one by one.
void WatchDesktopSettings(const std::function<void()>& changed) {
  if (!HasSessionBus()) return;
  auto* told = new QTimer(QCoreApplication::instance());
  told->setSingleShot(true);
  QObject::connect(told, &QTimer::timeout, told, changed);
  QDBusConnection::sessionBus().connect(QLatin1String(kPortal), QLatin1String(kPortalPath),
                                        QLatin1String(kPortalSettings),
                                        QStringLiteral("SettingChanged"), told, SLOT(start()));
}

}  // namespace desktop
