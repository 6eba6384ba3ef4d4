#include "qt/list_model.h"

#include <QPointer>

#include "qt/colors.h"
#include "qt/display_text.h"

namespace tresmor {

ListModel::ListModel(ListView& list, bool checkBoxes, std::vector<QIcon> icons, QObject* parent)
    : QAbstractTableModel(parent), list_(list), checkBoxes_(checkBoxes), icons_(std::move(icons)) {
  if (list_.Visible()) rows_ = list_.Count();
  list_.Listen([alive = QPointer<ListModel>(this)](const Notice& notice) {
    if (alive) alive->Hear(notice);
  });
}

int ListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int ListModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : list_.Columns(); }

QVariant ListModel::data(const QModelIndex& index, int role) const {
  const std::int32_t row = index.row() + 1;
  if (!index.isValid() || row > list_.Count()) return {};
  if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole) {
    std::string scratch;
    return ShownLine(list_.CellView(row, index.column(), scratch));
  }
  if (role == Qt::TextAlignmentRole && list_.Column(index.column() + 1).alignment == Alignment::Right) {
    return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
  }
  return index.column() == 0 ? FirstCell(row, role) : QVariant();
}

QVariant ListModel::FirstCell(std::int32_t row, int role) const {
  if (role == Qt::CheckStateRole && checkBoxes_) return list_.Checked(row) ? Qt::Checked : Qt::Unchecked;
  if (role == Qt::ForegroundRole && list_.ForeColor(row) != kWindowText) return ReadableColor(list_.ForeColor(row));
  if (role == Qt::DecorationRole) {
    const auto icon = static_cast<std::size_t>(list_.SmallIcon(row));
    if (icon < icons_.size() && !icons_[icon].isNull()) return icons_[icon];
  }
  return {};
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= list_.Columns()) return {};
  const ColumnHeader& header = list_.Column(section + 1);
  if (role == Qt::DisplayRole) return ShownLine(header.text);
  if (role == Qt::TextAlignmentRole) {
    return static_cast<int>((header.alignment == Alignment::Right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  }
  return {};
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  return Qt::ItemIsEnabled | Qt::ItemNeverHasChildren |
         (checkBoxes_ && index.column() == 0 ? Qt::ItemIsUserCheckable : Qt::NoItemFlags);
}

void ListModel::Hear(const Notice& notice) {
  // The toolkit looks at rows that are about to go once more.
  const bool before = notice.when == Notice::When::Before;
  if (notice.what == Notice::What::RowsRemoved) return before ? BeginRemoval(notice.first, notice.last) : EndRemoval();
  if (before) return;
  switch (notice.what) {
    case Notice::What::Visible:
    case Notice::What::RowsReset:
      return list_.Count() == rows_ && list_.Visible() ? MoveRows() : Reset();
    case Notice::What::RowsAdded:
      return Append();
    case Notice::What::Columns:
      return emit headerDataChanged(Qt::Horizontal, 0, list_.Columns() - 1);
    default:
      return;
  }
}

void ListModel::Reset() {
  beginResetModel();
  rows_ = list_.Visible() ? list_.Count() : 0;
  endResetModel();
}

void ListModel::Append() {
  const int rows = list_.Count();
  if (rows <= rows_) return;
  beginInsertRows({}, rows_, rows - 1);
  rows_ = rows;
  endInsertRows();
}

void ListModel::BeginRemoval(std::int32_t first, std::int32_t last) { beginRemoveRows({}, first - 1, last - 1); }

void ListModel::EndRemoval() {
  rows_ = list_.Count();
  endRemoveRows();
}

// As many rows as before, elsewhere: where the list is scrolled to stays.
void ListModel::MoveRows() {
  emit layoutAboutToBeChanged();
  emit layoutChanged();
}

}  // namespace tresmor
