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
#include <QWindow>
#include <algorithm>
#include <array>

#include "desk/options.h"
#include "qt/display_text.h"

namespace tresmor {
namespace {

QString TitleOf(const std::string& title) { return ShownLine(title.empty() ? kAppTitle : title); }

// As much of a name as a box has room for. Only where it would be wider than a screen has it places to break: they
// would go along when it is copied.
QString ShownName(const std::string& name) {
  constexpr qsizetype kMost = 2000;
  constexpr int kMostTogether = 80;
  const QString shown = ShownLine(name);
  if (shown.size() <= kMost) return Breakable(shown, kMostTogether);
  return Breakable(shown.left(kMost / 2) + QChar(0x2026) + shown.right(kMost / 2), kMostTogether);
}

QString Shown(const BoxText& text) {
  QString shown;
  for (const BoxText::Part& part : text.Parts()) {
    shown += part.kind == BoxText::Part::Kind::Name ? ShownName(part.text) : ShownLines(part.text);
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

// The toolkit's dialogs know names that are UTF-8 only. Others stand there as in a field that is typed in, which the
// toolkit takes for no file's name.
QString PathText(const std::string& path) {
  const QString text = QFile::decodeName(QByteArray::fromStdString(path));
  return QFile::encodeName(text).toStdString() == path ? text : EditText(path);
}
std::string PathBytes(const QString& path) { return QFile::encodeName(path).toStdString(); }
bool IsNameOfAFile(const QString& path) { return QFile::decodeName(QFile::encodeName(path)) == path; }

// The nearest folder that exists on the way to `path` and that the dialogs know; empty for the usual place.
QString NearestFolder(const QString& path) {
  QFileInfo info(path);
  if (!info.isAbsolute()) return {};
  while (!(info.isDir() && IsNameOfAFile(info.filePath())) && !info.isRoot()) info.setFile(info.absolutePath());
  return info.absoluteFilePath();
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

// Folders are asked for by the desktop's own dialog where it has one, files by the toolkit's: a desktop's asks about
// replacing before it adds the extension, and knows no filter for programs. The toolkit's names the files behind links
// by the links.
class FileDialog : public QFileDialog {
 public:
  FileDialog(const Binder& binder, const std::string& title, const QString& folder, FileMode mode)
      : QFileDialog(ModalOwner(), TitleOf(title)), binder_(binder) {
    binder_.BindHelp(*this);
    setOption(DontUseNativeDialog, mode != Directory);
    setOption(ShowDirsOnly, mode == Directory);
    setOption(DontResolveSymlinks);
    setSupportedSchemes({"file"});
    setFileMode(mode);
    if (!folder.isEmpty()) setDirectory(folder);
  }

  std::optional<std::string> Ask() {
    while (exec() == Accepted && !Chosen().isEmpty()) {
      if (MayTake(Chosen())) return PathBytes(Chosen());
    }
    return std::nullopt;
  }

  // Of a file to open that isn't there by the name that was typed.
  QString extensionToTry;

 protected:
  void accept() override {
    // A desktop's has closed by now, so what is chosen there is judged after it.
    if (fileMode() == Directory && !IsQuoted()) return QFileDialog::accept();
    const QString path = Chosen();
    const bool isFolder = QFileInfo(path).isDir();
    if (IsQuoted() && isFolder != (fileMode() == Directory)) {
      isFolder ? Enter(path) : Refuse("There is no folder of this name:", path);
    } else if (MayTake(path) && MayGoOn(path)) {
      IsQuoted() ? done(Accepted) : QFileDialog::accept();
    }
  }

 private:
  // The toolkit would take what stands between quotation marks for the names of several files.
  bool IsQuoted() const { return Typed().contains('"'); }
  // What stands in its field, which a desktop's dialog doesn't have.
  QString Typed() const {
    const auto* const field = findChild<QLineEdit*>("fileNameEdit");
    return field == nullptr ? QString() : field->text();
  }
  QString Chosen() const {
    const QString typed = IsQuoted() ? QuotedPath() : selectedFiles().value(0);
    const bool isWhole = extensionToTry.isEmpty() || QFileInfo::exists(typed) || !QFileInfo(typed).suffix().isEmpty();
    return isWhole ? typed : typed + '.' + extensionToTry;
  }
  // With the extension that the toolkit gives to other names.
  QString QuotedPath() const {
    const QString typed = Typed();
    const QFileInfo file(directory(), typed.startsWith("~/") ? QDir::homePath() + typed.mid(1) : typed);
    const bool isWhole = defaultSuffix().isEmpty() || file.isDir() || file.fileName().contains('.');
    return file.absoluteFilePath() + (isWhole ? QString() : '.' + defaultSuffix());
  }

  // Of a path that the toolkit can name exactly. A folder's may come from the desktop, which leaves such a character in
  // place of what it can't tell.
  bool MayTake(const QString& path) {
    const bool isExact =
        fileMode() != Directory || !path.contains(QChar::ReplacementCharacter) || QFileInfo(path).isDir();
    if (IsNameOfAFile(path) && isExact) return true;
    const QString what = fileMode() == Directory ? "folder" : "file";
    Refuse("This dialog can't choose a " + what + " whose name isn't UTF-8:", path);
    return false;
  }
  bool MayGoOn(const QString& path) {
    if (fileMode() == Directory) return true;
    const bool exists = QFileInfo::exists(path);
    if (acceptMode() == AcceptOpen) return exists || Confirm(path, " doesn't exist.\nDo you want to create it?");
    return !exists || !IsQuoted() || Confirm(path, " already exists.\nDo you want to replace it?");
  }
  void Enter(const QString& folder) {
    setDirectory(folder);
    findChild<QLineEdit*>("fileNameEdit")->clear();
  }

  void Refuse(const QString& words, const QString& path) {
    Box(QMessageBox::Warning, words + '\n' + Shown(path), QMessageBox::Ok);
  }
  bool Confirm(const QString& path, const QString& question) {
    return Box(QMessageBox::Question, Shown(path) + question, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
  }
  static QString Shown(const QString& path) { return ShownLine(EditedBytes(path)); }
  int Box(QMessageBox::Icon icon, const QString& text, QMessageBox::StandardButtons buttons) {
    QMessageBox box(icon, windowTitle(), text, buttons, ModalOwner());
    box.setTextFormat(Qt::PlainText);
    binder_.BindHelp(box);
    return box.exec();
  }

  const Binder& binder_;
};

// The window on the screen that another one, such as the tip of the day, belongs to; null for none.
QWidget* OwnerOf(const QWidget& window) {
  const QWindow* const owner = window.windowHandle() == nullptr ? nullptr : window.windowHandle()->transientParent();
  if (owner == nullptr || !owner->isVisible()) return nullptr;
  for (QWidget* const other : QApplication::topLevelWidgets()) {
    if (other->windowHandle() == owner) return other;
  }
  return nullptr;
}

}  // namespace

QWidget* ModalOwner() {
  if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
  // One that has gone may still seem active.
  if (QWidget* const active = QApplication::activeWindow(); active != nullptr && active->isVisible()) {
    QWidget* const owner = OwnerOf(*active);
    return owner == nullptr ? active : owner;
  }
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
  binder_.BindHelp(box);
  return AnswerOf(box.exec());
}

std::optional<std::string> QtDialogs::OpenFileDlg(const FileQuestion& question) {
  const QFileInfo start(PathText(question.startName));
  FileDialog dialog(binder_, question.title,
                    NearestFolder(start.isAbsolute() ? start.absolutePath() : PathText(question.startFolder)),
                    QFileDialog::AnyFile);
  const bool saves = question.mode == FileDialogMode::Save;
  dialog.setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setNameFilters(NameFilters(question));
  const QString extension = ShownLine(question.defaultExtension);
  if (std::any_of(question.filters.begin(), question.filters.end(), MeansPrograms)) {
    ShowPrograms(question, dialog);
  } else if (saves) {
    dialog.setDefaultSuffix(extension);
  } else {
    dialog.extensionToTry = extension;
  }
  if (!start.fileName().isEmpty()) dialog.selectFile(start.fileName());
  return dialog.Ask();
}

std::optional<std::string> QtDialogs::BrowseFolder(const std::string& title, const std::string& startDir) {
  FileDialog dialog(binder_, title, NearestFolder(PathText(startDir)), QFileDialog::Directory);
  return dialog.Ask();
}

std::string QtDialogs::InputBox(const BoxText& prompt, const std::string& title, const std::string& proposal) {
  QInputDialog dialog(ModalOwner());
  binder_.BindHelp(dialog);
  dialog.setWindowTitle(TitleOf(title));
  dialog.setLabelText(Shown(prompt).replace('&', "&&"));
  auto* const label = dialog.findChild<QLabel*>();
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  dialog.setTextValue(EditText(proposal));
  return dialog.exec() == QDialog::Accepted ? EditedBytes(dialog.textValue()) : std::string();
}

}  // namespace tresmor
