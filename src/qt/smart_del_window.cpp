#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>

#include "qt/form_parts.h"
#include "qt/form_windows.h"
#include "qt/list_widget.h"
#include "qt/tab_strip_widget.h"

namespace tresmor {
namespace {

void AddChoice(QGridLayout& grid, int row, const char* text, ChoiceList& list, const Binder& binder, QWidget* page) {
  auto* const field = Bound<QComboBox>(list, binder, page);
  grid.addWidget(LabelOf(text, field, page), row, 0);
  grid.addWidget(field, row, 1);
}

void BuildBasic(FrmSmartDel& form, const Binder& binder, QWidget* page) {
  auto* const grid = new QGridLayout(page);
  AddChoice(*grid, 0, "By Date:", form.lstDate, binder, page);
  AddChoice(*grid, 1, "By Size:", form.lstSize, binder, page);
  AddChoice(*grid, 2, "By Version:", form.lstVer, binder, page);
  grid->setColumnStretch(2, 1);
  grid->setRowStretch(3, 1);
}

QWidget* FolderList(FrmSmartDel& form, const Binder& binder, const ListTip& tips, QWidget* page) {
  ListLook look;
  look.multiSelect = true;
  look.hoverText = [&tips, &list = form.lstFolder] {
    const auto found = tips.texts.find(&list);
    return found == tips.texts.end() ? std::string() : found->second;
  };
  auto* const list = new ListWidget(form.lstFolder, binder, std::move(look), page);
  list->header()->setSectionResizeMode(QHeaderView::Stretch);
  return list;
}

QVBoxLayout* FolderButtons(FrmSmartDel& form, const Binder& binder, QWidget* page) {
  auto* const column = new QVBoxLayout;
  column->addWidget(Bound<QCheckBox>(form.chkSubFolder, binder, page));
  for (Button* const button : {&form.cmdSelAll, &form.cmdClrAll, &form.cmdGetSelections}) {
    column->addWidget(Bound<QPushButton>(*button, binder, page));
  }
  column->addStretch();
  return column;
}

QHBoxLayout* KeepRow(FrmSmartDel& form, const Binder& binder, QWidget* page) {
  auto* const date = Bound<QComboBox>(form.lstLeaveDate, binder, page);
  auto* const version = Bound<QComboBox>(form.lstLeaveVer, binder, page);
  auto* const row = new QHBoxLayout;
  row->addWidget(Bound<QCheckBox>(form.chkLeaveAtLeast1, binder, page));
  row->addStretch();
  row->addWidget(LabelOf("Date:", date, page));
  row->addWidget(date);
  row->addWidget(LabelOf("Version:", version, page));
  row->addWidget(version);
  return row;
}

void BuildMore(FrmSmartDel& form, const Binder& binder, const ListTip& tips, QWidget* page) {
  auto* const grid = new QGridLayout(page);
  QWidget* const folders = FolderList(form, binder, tips, page);
  grid->addWidget(LabelOf("By Folder:", folders, page), 0, 0, Qt::AlignTop);
  grid->addWidget(folders, 0, 1);
  grid->addLayout(FolderButtons(form, binder, page), 0, 2);
  grid->addWidget(Bound<QLabel>(form.lblFolderNote, binder, page), 1, 1, 1, 2);
  auto* const pattern = Bound<QComboBox>(form.cmbPattern, binder, page);
  grid->addWidget(LabelOf("By Pattern:", pattern, page), 2, 0);
  grid->addWidget(pattern, 2, 1, 1, 2);
  grid->addLayout(KeepRow(form, binder, page), 3, 0, 1, 3);
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(0, 1);
}

QWidget* Tabs(FrmSmartDel& form, const Binder& binder, const ListTip& tips, QWidget* owner) {
  auto* const room = new QWidget(owner);
  new TabStripWidget(form.TabOptions, binder, room, "Conditions");
  BuildBasic(form, binder, PlainFrame(form.frmOptions[0], binder, room));
  BuildMore(form, binder, tips, PlainFrame(form.frmOptions[1], binder, room));
  const Twips& twips = binder.Scale();
  room->setFixedSize(twips.ToPixels(PlaceOf(form.TabOptions)).size());
  return room;
}

QLabel* Line(Label& control, const Binder& binder, QWidget* owner) {
  auto* const line = Bound<QLabel>(control, binder, owner);
  line->setMinimumHeight(line->heightForWidth(binder.Scale().ToPixels(7200)));
  return line;
}

}  // namespace

std::unique_ptr<FormDialog> Build(FrmSmartDel& form, const Binder& binder, const ListTip& tips) {
  const auto cancel = [&form] { form.CancelButton.OnClick(); };
  auto window = std::make_unique<FormDialog>(form, binder, cancel, cancel);
  QDialog* const owner = window.get();
  BindCaption(form, *owner);
  auto* const heading = Bound<QLabel>(form.lblCriteria, binder, owner);
  MakeBold(*heading);
  auto* const layout = new QVBoxLayout(owner);
  layout->addWidget(heading);
  layout->addWidget(Bound<QLabel>(form.lblRequirement, binder, owner));
  layout->addWidget(Tabs(form, binder, tips, owner));
  layout->addWidget(Line(form.lblToDo, binder, owner));
  auto* const mark = Bound<QPushButton>(form.cmdMark, binder, owner);
  MakeBold(*mark);
  layout->addLayout(
      Centred({mark, Bound<QPushButton>(form.cmdClearMarks, binder, owner),
               Bound<QPushButton>(form.CancelButton, binder, owner), Bound<QPushButton>(form.cmdHelp, binder, owner)}));
  layout->setSizeConstraint(QLayout::SetFixedSize);
  window->BeginAt(*mark);
  return window;
}

}  // namespace tresmor
