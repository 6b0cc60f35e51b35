// The dialog of two fields in Qt alone: bare_qt [HOW MANY, one after another [keep the window]]

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <cstdlib>

namespace {

void AddField(QDialog& dialog, const char* label, int top) {
  auto* text = new QLabel(label, &dialog);
  text->setGeometry(20, top, 100, 22);
  auto* edit = new QLineEdit(&dialog);
  edit->setGeometry(130, top, 275, 22);
}

void AddButton(QDialog& dialog, const char* text, int left) {
  auto* button = new QPushButton(text, &dialog);
  button->setGeometry(left, 112, 80, 24);
  QObject::connect(button, &QPushButton::clicked, &dialog, &QDialog::accept);
}

void ShowDialog(QDialog& dialog) {
  dialog.setFixedSize(425, 152);
  auto* message = new QLabel("Enter the name", &dialog);
  message->setGeometry(20, 12, 385, 20);
  AddField(dialog, "First", 44);
  AddField(dialog, "Last", 76);
  AddButton(dialog, "OK", 325);
  AddButton(dialog, "Cancel", 235);
  dialog.exec();
}

void ShowInNewWindows(int count) {
  for (int i = 0; i < count; ++i) {
    QDialog dialog;
    ShowDialog(dialog);
  }
}

void ShowInOneWindow(int count) {
  QDialog dialog;
  for (int i = 0; i < count; ++i) {
    ShowDialog(dialog);
    const QObjectList content = dialog.children();
    qDeleteAll(content);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const int count = argc > 1 ? std::atoi(argv[1]) : 1;
  int own_arguments = 1;
  QApplication application(own_arguments, argv);
  if (argc > 2) {
    ShowInOneWindow(count);
  } else {
    ShowInNewWindows(count);
  }
}
