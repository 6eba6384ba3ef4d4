#include "scope/scope_controls.h"

#include <vector>

namespace tresmor {
namespace {

constexpr std::int32_t kScopeHelp = 117;  // topic of the help

}  // namespace

ScopeControls::ScopeControls() {
  lstPath.AddColumn({"Path", 5292});
  lstPath.AddColumn({"Sub-folder", 1411});
  lstPath.AddColumn({"Min. Size", 1764});
  lstPath.AddColumn({"Max. Size", 1764});
  lstPath.AddColumn({"Date", 2540});
  lstPath.AddColumn({"Search Target", 2540});
  for (TextBox* const size : {&txtMinSz, &txtMaxSz}) size->MaxLength = 9;
  txtDate.Enabled = false;
  for (std::size_t i = 1; i < frmPath.size(); ++i) frmPath[i].Visible = false;
  frmSelPath.HelpContextID = kScopeHelp;
}

void ClearScope(ScopeControls& scope) {
  scope.lstPath.Clear();
  scope.txtMinSz.Text = "";
  scope.txtMaxSz.Text = "";
  scope.chkExclude.Value = kOff;
  scope.cmbSrchArea.Choose(kSearchTargetEntry);
  scope.cmbDate.Choose(kAnyDate);
}

void FocusField(ScopeControls& scope, ScopeTab tab, Control& field) {
  scope.TabPath.Select(tab);
  field.SetFocus();
}

void AddIncludedRow(ListView& lstPath, const ScopeRow& row) {
  const std::vector<CellValue> cells = {row.SubFolder, row.MinSize, row.MaxSize, row.Date, row.SearchTarget};
  lstPath.SetSmallIcon(lstPath.AddRow(row.Text, cells), ScopeRow::kIncluded);
}

void AddExcludedRow(ListView& lstPath, const std::string& folder) {
  const std::vector<CellValue> cells = {"Yes"};
  lstPath.SetSmallIcon(lstPath.AddRow(folder, cells), ScopeRow::kExcluded);
}

}  // namespace tresmor
