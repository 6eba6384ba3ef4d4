#include "qt/list_model.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QPixmap>
#include <QSignalSpy>
#include <random>

#include "qt/colors.h"
#include "qt/qt_test.h"

namespace tresmor::tests {
namespace {

struct ModelStage {
  ModelStage() {
    list.AddColumn({"Name", 2540});
    list.AddColumn({"Size", 1764, Alignment::Right});
  }
  void AddRows(int count) {
    for (int i = 0; i < count; ++i) {
      const std::string size = std::to_string(i);
      const std::vector<CellValue> cells = {CellValue(size)};
      list.AddRow("row" + std::to_string(random() % 1000), cells);
    }
  }

  std::mt19937 random{3};
  ListView list;
  ListModel model{list, true, {QIcon(), QIcon(QPixmap(8, 8))}, nullptr};
};

QVariant At(const ListModel& model, int row, int column, int role) {
  return model.data(model.index(row - 1, column), role);
}

TEST(ListModelCells, AreTheControlsOwn) {
  ModelStage stage;
  stage.AddRows(2);
  stage.list.SetCell(1, 0, "a\nb");
  stage.list.SetChecked(1, true);
  stage.list.SetSmallIcon(2, 1);
  EXPECT_EQ(At(stage.model, 1, 0, Qt::DisplayRole), QStringLiteral("a\u240Ab"));
  EXPECT_EQ(At(stage.model, 1, 0, Qt::AccessibleTextRole), QStringLiteral("a\u240Ab"));
  EXPECT_EQ(At(stage.model, 1, 0, Qt::CheckStateRole).toInt(), Qt::Checked);
  EXPECT_EQ(At(stage.model, 2, 0, Qt::CheckStateRole).toInt(), Qt::Unchecked);
  EXPECT_FALSE(At(stage.model, 1, 1, Qt::CheckStateRole).isValid());
  EXPECT_FALSE(At(stage.model, 1, 0, Qt::DecorationRole).isValid());
  EXPECT_TRUE(At(stage.model, 2, 0, Qt::DecorationRole).isValid());
  EXPECT_TRUE(At(stage.model, 2, 1, Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
  EXPECT_FALSE(At(stage.model, 2, 0, Qt::TextAlignmentRole).isValid());
  QSignalSpy headers(&stage.model, &ListModel::headerDataChanged);
  stage.list.SetColumnText(2, "^ Size");
  EXPECT_EQ(headers.count(), 1);
  EXPECT_EQ(stage.model.headerData(1, Qt::Horizontal, Qt::DisplayRole), "^ Size");
}

TEST(ListModelCells, ColoursCanBeReadOnLightAndDarkGrounds) {
  ModelStage stage;
  stage.AddRows(1);
  EXPECT_FALSE(At(stage.model, 1, 0, Qt::ForegroundRole).isValid());
  stage.list.SetForeColor(1, 0x800000);  // a dark blue
  const QPalette usual = QApplication::palette();
  QPalette light;
  light.setColor(QPalette::Base, Qt::white);
  light.setColor(QPalette::Text, Qt::black);
  QApplication::setPalette(light);
  EXPECT_EQ(At(stage.model, 1, 0, Qt::ForegroundRole).value<QColor>(), QColor(0, 0, 0x80));
  QPalette dark;
  dark.setColor(QPalette::Base, Qt::black);
  dark.setColor(QPalette::Text, Qt::white);
  QApplication::setPalette(dark);
  const auto shown = At(stage.model, 1, 0, Qt::ForegroundRole).value<QColor>();
  EXPECT_GT(shown.lightness(), 150);
  EXPECT_NEAR(shown.hueF(), QColor(0, 0, 0x80).hueF(), 0.01);
  QApplication::setPalette(usual);
}

TEST(ListModelRows, AHiddenListHasNoneAndIsReadAnewOnce) {
  ModelStage stage;
  stage.AddRows(3);
  stage.list.Visible = false;
  EXPECT_EQ(stage.model.rowCount(), 0);
  QSignalSpy resets(&stage.model, &ListModel::modelReset);
  QSignalSpy inserts(&stage.model, &ListModel::rowsInserted);
  stage.AddRows(100);
  stage.list.RemoveRow(1);
  stage.list.SetSorted(true);
  EXPECT_EQ(stage.model.rowCount(), 0);
  stage.list.Visible = true;
  EXPECT_EQ(stage.model.rowCount(), 102);
  EXPECT_EQ(resets.count(), 1);
  EXPECT_EQ(inserts.count(), 0);
}

TEST(ListModelRows, KeepTheToolkitsRulesWhileTheyChange) {
  ModelStage stage;
  const QAbstractItemModelTester tester(&stage.model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  for (int round = 0; round < 300; ++round) {
    const std::int32_t count = stage.list.Count();
    const auto any = [&] { return static_cast<std::int32_t>(stage.random() % static_cast<unsigned>(count)) + 1; };
    switch (stage.random() % 8) {
      case 0:
        if (count > 0) stage.list.RemoveRow(any());
        break;
      case 1:
        if (count > 1) {
          const std::vector<std::int32_t> rows = {1, count};
          stage.list.RemoveRows(rows);
        }
        break;
      case 2:
        stage.list.SortOrder = round % 2 == 0 ? kAscending : kDescending;
        stage.list.SetSorted(true);
        break;
      case 3:
        stage.list.Visible = !stage.list.Visible();
        break;
      case 4:
        if (count > 0) stage.list.SetCell(any(), 0, CellValue("changed"));
        break;
      case 5:
        if (round % 10 == 0) stage.list.Clear();
        break;
      default:
        stage.AddRows(3);
    }
    ASSERT_EQ(stage.model.rowCount(), stage.list.Visible() ? stage.list.Count() : 0);
  }
}

}  // namespace
}  // namespace tresmor::tests
