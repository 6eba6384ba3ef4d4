// What the monkey does with searches, menus and the window itself.
#include "soak/monkey.h"

namespace tresmor::soak {

void Monkey::AddWindowDeeds() {
  FrmMain& frm = *frm_;
  Add("Search", 14, [this, &frm] { Click(frm.cmdSrch); });
  Add("a usual search from the start", 8, [this, &frm] {
    Click(frm.cmdNewSrch);
    if (!ScopeIsReachable()) return;
    frm.txtExt.SetText("*.*");
    for (const char* const folder : {"/data", "/usb"}) {
      frm.txtPath.SetText(folder);
      Click(frm.cmdAdd);
    }
    Click(frm.cmdSrch);
  });
  Add("New Search", 1, [this, &frm] { Click(frm.cmdNewSrch); });
  Add("Task", 1, [this, &frm] { Click(frm.cmdTask); });
  Add("tick what to search", 3, [this, &frm] {
    if (frm.lstSrchType.Enabled()) frm.lstSrchType.SetTicked(dice_.UpTo(frm.lstSrchType.Count() - 1), !dice_.OneIn(3));
  });
  Add("tick an option of the search", 3, [this, &frm] {
    CheckBox* const boxes[] = {&frm.chkTolerant, &frm.chkHidden, &frm.chkProtectWinDir, &frm.chkVer};
    Toggle(*dice_.Pick(boxes));
  });
  const auto addItem = [this](Menu& menu, MenuItem& item, std::size_t weight) {
    Add(item.Caption().c_str(), weight, [&menu, &item] { menu.Shortcut(item); });
  };
  for (Menu* const menu : frm.Menus()) {
    for (MenuItem* const item : menu->Items()) {
      if (item != nullptr && item != &frm.MnuQuit && item != &frm.mnuNewSrch) addItem(*menu, *item, 2);
    }
  }
  addItem(frm.MnuMain, frm.MnuQuit, 1);
  for (MenuItem* const item : {&frm.mnuDelete, &frm.mnuMove, &frm.mnuCopy, &frm.mnuSmartDel}) {
    addItem(frm.mnuFile, *item, 6);
  }
  Add("mark rows of any list and do something with their files", 40, [this, &frm] {
    frm.results.tabMain.Select(1 + dice_.UpTo(kResultLists - 1));
    ListView& lst = frm.results.Shown();
    for (std::int32_t row = 1; row <= lst.Count(); ++row) {
      if (dice_.OneIn(4)) lst.SetChecked(row, true);
    }
    if (lst.OnItemCheck) lst.OnItemCheck();
    MenuItem* const items[] = {&frm.mnuDelete, &frm.mnuMove, &frm.mnuCopy};
    frm.mnuFile.Shortcut(*dice_.Pick(items));
  });
  Add("resize", 3, [this] { Passive(); });
  Add("help", 1, [this] { window_->Help(static_cast<std::int32_t>(100 + dice_.Below(25))); });
  Add("the tip's buttons", 1, [this] {
    FrmTip& tip = window_->frmTip;
    if (tip.Visible()) Click(dice_.OneIn(2) ? tip.cmdNextTip : tip.cmdOK);
  });
  // Another program can't undo while this one is at an operation, which a look into its middle would be.
  Add("undo", 2, [this] {
    if (depth_ == 1) machine_.Undo();
  });
}

}  // namespace tresmor::soak
