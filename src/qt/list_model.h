#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <vector>

#include "controls/list_view.h"

namespace tresmor {

// The rows of a list as the toolkit reads them: straight from the control, which alone holds them. A hidden list has
// none here.
class ListModel : public QAbstractTableModel {
 public:
  // `icons` are those of SmallIcon, by its number.
  ListModel(ListView& list, bool checkBoxes, std::vector<QIcon> icons, QObject* parent);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  void Hear(const Notice& notice);
  void Reset();
  void Append();
  void BeginRemoval(std::int32_t first, std::int32_t last);
  void EndRemoval();
  void MoveRows();
  QVariant FirstCell(std::int32_t row, int role) const;

  ListView& list_;
  const bool checkBoxes_;
  const std::vector<QIcon> icons_;
  int rows_ = 0;  // as the toolkit knows them
};

}  // namespace tresmor
