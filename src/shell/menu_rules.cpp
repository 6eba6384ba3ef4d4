#include "shell/menu_rules.h"

namespace tresmor {
namespace {

bool IsAtRest(const FrmMain& frm) { return frm.cmdSrch.Caption() == kSearchCaption; }

void Enable(MenuItem& item, bool enabled) { item.Enabled = enabled && item.OnClick; }

}  // namespace

void BindMenuRules(FrmMain& frm, const std::function<bool()>& isActing) {
  for (const Menu* const menu : frm.Menus()) {
    for (MenuItem* const item : menu->Items()) {
      if (item != nullptr) Enable(*item, true);
    }
  }
  frm.MnuMain.OnOpen = [&frm, isActing] { Enable(frm.mnuOptions, !isActing()); };
  frm.mnuFile.OnOpen = [&frm] {
    const bool enabled = frm.results.Shown().Count() >= 1 && IsAtRest(frm);
    for (MenuItem* const item : frm.mnuFile.Items()) {
      if (item != nullptr) Enable(*item, enabled);
    }
  };
  frm.mnuSrchSession.OnOpen = [&frm] {
    for (MenuItem* const item : {&frm.mnuLoadResultList, &frm.mnuSaveResultList, &frm.mnuSaveAsResultList}) {
      Enable(*item, IsAtRest(frm));
    }
  };
}

}  // namespace tresmor
