#pragma once

// What a screen reader sees: the accessibility tree, read from outside over a session bus of the
// tests' own.

#include <QDBusConnection>
#include <QDBusMessage>
#include <memory>
#include <string>
#include <vector>

#include "tests/desktop/x_session.h"
#include "tests/support/temporary_folder.h"

namespace desktop_test {

class ScreenReader {
 public:
  // The one of this process. Display processes that start from now on see that it is there.
  static ScreenReader& Get();

  // Every window on the desktop, a line for each node: role, name, (description), [text] and
  // states, two blanks further in than the node that it belongs to.
  std::string Tree() const;

  // Waits until that line is in the tree.
  bool WaitForLine(const std::string& line) const;

  // Does the first action that a node of that name offers.
  void Act(const std::string& name) const;

  // Writes all that is told about objects from now on into a file, as dbus-monitor prints it, as
  // long as the process lives.
  std::unique_ptr<Process> Record(const std::string& file) const;

  // Puts a text into the field of that name.
  void Enter(const std::string& name, const std::string& text) const;

 private:
  struct Node {
    QString service, path;
  };

  ScreenReader();
  ~ScreenReader();

  QVariant Call(const Node& node, const char* interface, const char* method,
                const QVariantList& arguments = {}) const;
  QVariant Property(const Node& node, const char* interface, const char* name) const;
  std::vector<Node> Children(const Node& node) const;
  std::string Describe(const Node& node) const;
  std::string States(const Node& node) const;
  void Walk(const Node& node, const std::function<void(const Node&, int depth)>& visit,
            int depth = 0) const;
  Node Find(const std::string& name) const;

  const testing_tools::TemporaryFolder folder_;
  std::unique_ptr<Process> daemon_;
  QString address_;      // of the bus with the accessibility tree
  QDBusConnection bus_;  // that of the accessibility tree
};

}  // namespace desktop_test
