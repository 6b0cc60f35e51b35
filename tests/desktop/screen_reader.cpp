#include "tests/desktop/screen_reader.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <array>

namespace desktop_test {
namespace {

constexpr const char* kAccessible = "org.a11y.atspi.Accessible";

struct State {
  unsigned bit;  // as the protocol numbers them
  const char* name;
};
constexpr std::array kStates{State{1, "active"},   State{4, "checked"}, State{10, "expanded"},
                             State{12, "focused"}, State{16, "modal"},  State{23, "selected"},
                             State{39, "default"}};
constexpr unsigned kEnabled = 8;
constexpr unsigned kPasswordRole = 40;  // its name is that of any text

}  // namespace

ScreenReader& ScreenReader::Get() {
  static ScreenReader reader;
  return reader;
}

ScreenReader::ScreenReader() : bus_(QString()) {
  setenv("GSETTINGS_BACKEND", "memory", 1);  // the user's settings are left alone
  setenv("XDG_RUNTIME_DIR", (folder_ / "").c_str(), 1);
  daemon_ = std::make_unique<Process>(
      std::vector<std::string>{"sh", "-c",
                               "exec dbus-daemon --session --nofork --print-address "
                               "--address=unix:path=$XDG_RUNTIME_DIR/bus 2>/dev/null"},
      Process::Output::kRead);
  const std::string address = daemon_->Line();
  setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);

  const Node service{"org.a11y.Bus", "/org/a11y/bus"};
  bus_ = QDBusConnection::connectToBus(QString::fromStdString(address), "session");
  Call(service, "org.freedesktop.DBus.Properties", "Set",
       {"org.a11y.Status", "IsEnabled", QVariant::fromValue(QDBusVariant(true))});
  address_ = Call(service, "org.a11y.Bus", "GetAddress").toString();
  bus_ = QDBusConnection::connectToBus(address_, "accessibility");
}

ScreenReader::~ScreenReader() = default;

QVariant ScreenReader::Call(const Node& node, const char* interface, const char* method,
                            const QVariantList& arguments) const {
  QDBusMessage question =
      QDBusMessage::createMethodCall(node.service, node.path, interface, method);
  question.setArguments(arguments);
  const QDBusMessage answer = bus_.call(question);
  return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0) : QVariant();
}

QVariant ScreenReader::Property(const Node& node, const char* interface, const char* name) const {
  const QVariant value = Call(node, "org.freedesktop.DBus.Properties", "Get", {interface, name});
  return value.value<QDBusVariant>().variant();
}

std::vector<ScreenReader::Node> ScreenReader::Children(const Node& node) const {
  const QVariant reply = Call(node, kAccessible, "GetChildren");
  std::vector<Node> children;
  if (!reply.canConvert<QDBusArgument>()) return children;
  const auto list = reply.value<QDBusArgument>();
  for (list.beginArray(); !list.atEnd();) {
    Node child;
    QDBusObjectPath path;
    list.beginStructure();
    list >> child.service >> path;
    list.endStructure();
    child.path = path.path();
    children.push_back(child);
  }
  list.endArray();
  return children;
}

std::string ScreenReader::States(const Node& node) const {
  const auto words = qdbus_cast<QList<uint>>(Call(node, kAccessible, "GetState"));
  const auto has = [&](unsigned bit) { return words.value(bit / 32) >> bit % 32 & 1; };
  std::string text;
  for (const State& state : kStates) {
    if (has(state.bit)) text += std::string(" ") + state.name;
  }
  return has(kEnabled) ? text : text + " disabled";
}

std::string ScreenReader::Describe(const Node& node) const {
  std::string line =
      Call(node, kAccessible, "GetRole").toUInt() == kPasswordRole ? "password " : "";
  line += Call(node, kAccessible, "GetRoleName").toString().toStdString() + ": " +
          Property(node, kAccessible, "Name").toString().toStdString();
  const QString description = Property(node, kAccessible, "Description").toString();
  if (!description.isEmpty()) line += " (" + description.toStdString() + ")";
  const QString text = Call(node, "org.a11y.atspi.Text", "GetText", {0, -1}).toString();
  if (!text.isEmpty()) line += " [" + text.toStdString() + "]";
  return line + States(node);
}

void ScreenReader::Walk(const Node& node, const std::function<void(const Node&, int)>& visit,
                        int depth) const {
  for (const Node& child : Children(node)) {
    visit(child, depth);
    Walk(child, visit, depth + 1);
  }
}

std::string ScreenReader::Tree() const {
  std::string tree;
  Walk({"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"},
       [&](const Node& node, int depth) {
         if (depth == 0) return;  // a program
         tree += std::string(static_cast<std::size_t>(2 * depth - 2), ' ') + Describe(node) + '\n';
       });
  return tree;
}

bool ScreenReader::WaitForLine(const std::string& line) const {
  return WaitFor([&] { return Tree().find(line + '\n') != std::string::npos; });
}

ScreenReader::Node ScreenReader::Find(const std::string& name) const {
  Node found;
  Walk({"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"}, [&](const Node& node, int) {
    const bool label = Call(node, kAccessible, "GetRoleName").toString() == "label";
    if (!label && Property(node, kAccessible, "Name").toString().toStdString() == name) {
      found = node;
    }
  });
  return found;
}

void ScreenReader::Act(const std::string& name) const {
  Call(Find(name), "org.a11y.atspi.Action", "DoAction", {0});
}

// Programs tell only what somebody has asked for.
std::unique_ptr<Process> ScreenReader::Record(const std::string& file) const {
  Call({"org.a11y.atspi.Registry", "/org/a11y/atspi/registry"}, "org.a11y.atspi.Registry",
       "RegisterEvent", {"object:", QStringList(), ""});
  const std::string address = address_.toStdString();
  auto monitor = std::make_unique<Process>(std::vector<std::string>{
      "sh", "-c",
      "exec stdbuf -oL dbus-monitor --address '" + address +
          "' \"interface='org.a11y.atspi.Event.Object'\" > '" + file + "'"});
  WaitFor([&] { return std::filesystem::exists(file) && std::filesystem::file_size(file) > 0; });
  return monitor;
}

void ScreenReader::Enter(const std::string& name, const std::string& text) const {
  Call(Find(name), "org.a11y.atspi.EditableText", "SetTextContents",
       {QString::fromStdString(text)});
}

}  // namespace desktop_test
