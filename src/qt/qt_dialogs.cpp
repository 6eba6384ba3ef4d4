#include "qt/qt_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QSortFilterProxyModel>
#include <algorithm>
#include <array>

#include "desk/options.h"
#include "qt/display_text.h"

namespace tresmor {
namespace {

QString TitleOf(const std::string& title) { return ShownLine(title.empty() ? kAppTitle : title); }

QString Shown(const BoxText& text) {
  QString shown;
  for (const BoxText::Part& part : text.Parts()) {
    shown += part.kind == BoxText::Part::Kind::Name ? ShownLine(part.text) : ShownLines(part.text);
  }
  return shown;
}

QMessageBox::Icon IconOf(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::Critical:
      return QMessageBox::Critical;
    case BoxIcon::Question:
      return QMessageBox::Question;
    case BoxIcon::Exclamation:
      return QMessageBox::Warning;
    case BoxIcon::Information:
      return QMessageBox::Information;
    case BoxIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case BoxButtons::OkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case BoxButtons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case BoxButtons::Ok:
      break;
  }
  return QMessageBox::Ok;
}

// What Escape and the frame answer: never more than the least.
QMessageBox::StandardButton EscapeOf(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::YesNo:
      return QMessageBox::No;
    case BoxButtons::OkCancel:
    case BoxButtons::YesNoCancel:
      return QMessageBox::Cancel;
    case BoxButtons::Ok:
      break;
  }
  return QMessageBox::Ok;
}

BoxAnswer AnswerOf(int button) {
  switch (button) {
    case QMessageBox::Yes:
      return BoxAnswer::Yes;
    case QMessageBox::No:
      return BoxAnswer::No;
    case QMessageBox::Cancel:
      return BoxAnswer::Cancel;
    default:
      return BoxAnswer::Ok;
  }
}

// Paths go through the dialogs of the platform as it writes them: its own pair of conversions keeps what isn't UTF-8
// only where the locale does, so such names stay the business of the lists.
QString PathText(const std::string& path) { return QFile::decodeName(QByteArray::fromStdString(path)); }
std::string PathBytes(const QString& path) { return QFile::encodeName(path).toStdString(); }

// The nearest folder that exists on the way to `path`; empty for the usual place.
QString NearestFolder(const std::string& path) {
  if (path.empty()) return {};
  QFileInfo info(PathText(path));
  while (!info.isDir() && !info.isRoot() && info.absolutePath() != info.absoluteFilePath()) {
    info.setFile(info.absolutePath());
  }
  return info.isDir() ? info.absoluteFilePath() : QString();
}

// The program's "*.*" is every name; the toolkit's has a dot in it.
QString PatternText(const std::string& pattern) {
  return pattern == "*.*" ? QString("*") : ShownLine(pattern).replace(';', ' ');
}

// Elsewhere programs are told by this extension; here by a bit, and their names have none.
bool MeansPrograms(const FileFilter& filter) { return filter.pattern == "*.exe"; }

// Hides files that can't be run.
class ProgramsOnly : public QSortFilterProxyModel {
 public:
  using QSortFilterProxyModel::QSortFilterProxyModel;

  void Turn(bool on) {
    on_ = on;
    invalidateFilter();
  }

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override {
    if (!on_) return true;
    const auto* const files = static_cast<const QFileSystemModel*>(sourceModel());
    const QFileInfo info(files->filePath(files->index(row, 0, parent)));
    return info.isDir() || info.isExecutable();
  }

 private:
  bool on_ = false;
};

// A filter that means programs shows these alone while it is chosen.
void ShowPrograms(const FileQuestion& question, QFileDialog& dialog) {
  auto* const programs = new ProgramsOnly(&dialog);
  dialog.setProxyModel(programs);
  programs->Turn(MeansPrograms(question.filters.front()));
  QObject::connect(
      &dialog, &QFileDialog::filterSelected, programs, [&question, &dialog, programs](const QString& name) {
        programs->Turn(
            MeansPrograms(question.filters.at(static_cast<std::size_t>(dialog.nameFilters().indexOf(name)))));
      });
}

QStringList NameFilters(const FileQuestion& question) {
  QStringList filters;
  for (const FileFilter& filter : question.filters) {
    const QString pattern = MeansPrograms(filter) ? "*" : PatternText(filter.pattern);
    filters += ShownLine(filter.label).section(" (", 0, 0) + " (" + pattern + ")";
  }
  return filters;
}

std::optional<std::string> Ask(QFileDialog& dialog) {
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return PathBytes(dialog.selectedFiles().front());
}

}  // namespace

QWidget* ModalOwner() {
  if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
  if (QWidget* const active = QApplication::activeWindow()) return active;
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->windowType() == Qt::Window) return window;
  }
  return nullptr;
}

BoxAnswer QtDialogs::MessageBox(const BoxText& text, BoxIcon icon, const std::string& title, BoxButtons buttons) {
  QMessageBox box(IconOf(icon), TitleOf(title), Shown(text), ButtonsOf(buttons), ModalOwner());
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  box.setEscapeButton(EscapeOf(buttons));
  return AnswerOf(box.exec());
}

std::optional<std::string> QtDialogs::OpenFileDlg(const FileQuestion& question) {
  QFileDialog dialog(ModalOwner(), TitleOf(question.title));
  const bool saves = question.mode == FileDialogMode::Save;
  dialog.setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(saves ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setNameFilters(NameFilters(question));
  if (std::any_of(question.filters.begin(), question.filters.end(), MeansPrograms)) {
    ShowPrograms(question, dialog);
  } else {
    dialog.setDefaultSuffix(ShownLine(question.defaultExtension));
  }
  const QFileInfo start(PathText(question.startName));
  if (start.isAbsolute()) {
    dialog.setDirectory(start.absolutePath());
  } else if (const QString folder = NearestFolder(question.startFolder); !folder.isEmpty()) {
    dialog.setDirectory(folder);
  }
  if (!start.fileName().isEmpty()) dialog.selectFile(start.fileName());
  return Ask(dialog);
}

std::optional<std::string> QtDialogs::BrowseFolder(const std::string& title, const std::string& startDir) {
  QFileDialog dialog(ModalOwner(), TitleOf(title));
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  if (const QString folder = NearestFolder(startDir); !folder.isEmpty()) dialog.setDirectory(folder);
  return Ask(dialog);
}

std::string QtDialogs::InputBox(const BoxText& prompt, const std::string& title, const std::string& proposal) {
  QInputDialog dialog(ModalOwner());
  dialog.setWindowTitle(TitleOf(title));
  dialog.setLabelText(Shown(prompt).replace('&', "&&"));
  dialog.findChild<QLabel*>()->setTextFormat(Qt::PlainText);
  dialog.setTextValue(EditText(proposal));
  return dialog.exec() == QDialog::Accepted ? EditedBytes(dialog.textValue()) : std::string();
}

}  // namespace tresmor
