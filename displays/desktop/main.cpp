// tarvo-desktop --connection FD    shows dialogs for the host at the other end of the socket
// tarvo-desktop --preview FD       shows the dialogs of a script, of which that host tells, at once
// tarvo-desktop --render FILE      draws the description on standard input into a PNG
// tarvo-desktop --cut-texts FILE   writes which of its texts do not fit, as JSON
// tarvo-desktop --compare OLD NEW DIFFERENCE
//                                  whether two pictures look the same, as its status; if they do
//                                  not, draws the difference

#include <fontconfig/fontconfig.h>

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>
#include <thread>

#include "displays/desktop/alert_icon.h"
#include "displays/desktop/compare.h"
#include "displays/desktop/dialog_style.h"
#include "displays/desktop/host_session.h"
#include "displays/desktop/preview_window.h"
#include "displays/desktop/render.h"
#include "displays/desktop/screen_probe.h"
#include "displays/desktop/screen_reader.h"
#include "displays/desktop/session_bus.h"
#include "displays/protocol/messages.h"

namespace {

constexpr int kSearchInterval = 1000;  // milliseconds between the letters of one search

// What Qt remarks on the desktop around it is of no use to the host's user.
void PrintErrorsOnly(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type != QtCriticalMsg && type != QtFatalMsg) return;
  std::fprintf(stderr, "tarvo-desktop: %s\n", text.toLocal8Bit().constData());
}

// `Session` serves the host at the other end of the socket `fd`.
template <class Session>
int ServeHost(int argc, char** argv, int fd) {
  signal(SIGINT, SIG_IGN);  // Control-C at the host's terminal is the host's to answer
  auto probe = std::make_unique<desktop::ScreenProbe>();
  if (!probe->WhyNone().empty()) {
    desktop::ReportNoScreen(fd, probe->WhyNone());
    return 1;
  }
  desktop::KeepQtFromStartingSessionBus();
  // The fonts are looked up while Qt connects to the screen, and nothing may change the environment
  // meanwhile. Qt would remove this variable, so it is removed before.
  unsetenv("DESKTOP_STARTUP_ID");
  std::jthread fonts([] { FcInit(); });
  QApplication application(argc, argv);
  probe.reset();
  // Qt's own words, in the menus of fields, in the user's language.
  QTranslator words;
  if (words.load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                 QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(&words);
  }
  QApplication::setWindowIcon(desktop::ProgramIcon());
  desktop::SetUpDialogStyle();
  QApplication::setKeyboardInputInterval(kSearchInterval);
  desktop::AwaitScreenReader();
  Session session(fd);
  fonts.join();  // or the first dialog, which needs them, would look them up once more
  return QApplication::exec();
}

// Without a screen: `work` is what is done with the file.
int Render(int argc, char** argv, const std::string& file,
           std::string (*work)(const std::string& file)) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  desktop::SetUpDialogStyle();
  const std::string error = work(file);
  if (error.empty()) return 0;
  std::fprintf(stderr, "tarvo-desktop: %s\n", error.c_str());
  return 1;
}

int Compare(const std::string& before, const std::string& after, const std::string& difference) {
  try {
    return desktop::LookTheSame(before, after, difference) ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "tarvo-desktop: %s\n", error.what());
    return 2;
  }
}

int Usage() {
  std::fprintf(stderr,
               "usage: tarvo-desktop --connection FD | --preview FD | --render FILE | "
               "--cut-texts FILE | --compare OLD NEW DIFFERENCE\n");
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 5 && std::string(argv[1]) == "--compare") return Compare(argv[2], argv[3], argv[4]);
  if (argc != 3) return Usage();
  const std::string option = argv[1];
  const std::string argument = argv[2];
  int own_arguments = 1;  // Qt sees the program's name alone
  qInstallMessageHandler(PrintErrorsOnly);
  QCoreApplication::setAttribute(Qt::AA_DisableSessionManager);
  QApplication::setQuitOnLastWindowClosed(false);
  if (option == "--render") return Render(own_arguments, argv, argument, desktop::RenderDialog);
  if (option == "--cut-texts") return Render(own_arguments, argv, argument, desktop::WriteCutTexts);
  const bool previews = option == "--preview";
  const int fd = display::protocol::ReadConnection(
      previews ? display::protocol::kConnectionOption : option, argument);
  if (fd < 0) return Usage();
  return previews ? ServeHost<desktop::PreviewWindow>(own_arguments, argv, fd)
                  : ServeHost<desktop::HostSession>(own_arguments, argv, fd);
}
