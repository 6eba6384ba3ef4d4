// What the monkey does where folders to search are chosen.
#include "soak/monkey.h"
#include "soak/places.h"

namespace tresmor::soak {

namespace {

constexpr const char* kTypedFolders[] = {"/data", "/data/", "/data/a",  "/usb", "/home/me",
                                         "/",     "",       "/nowhere", "a/b",  "/data/link"};
constexpr const char* kPatterns[] = {"*.*", "*.txt", "*.jpg;*.exe", "", ";", "a*", "*\xff*", "?.txt"};
constexpr const char* kSizes[] = {"", "0", "1", "100", "-1", "abc", "99999999999", "1.5"};
constexpr const char* kDates[] = {"", "2001-09-10", "10/9/2001", "yesterday", "2001-13-40", "2001-09-10 12:30"};

}  // namespace

void Monkey::AddScopeDeeds() {
  FrmMain& frm = *frm_;
  const auto type = [this](auto& field, const auto& texts) {
    if (!ScopeIsReachable()) return;
    if constexpr (requires { field.SetText(""); }) {
      field.SetText(dice_.Pick(texts));
    } else {
      field.Text = dice_.Pick(texts);
      if (field.OnLostFocus) field.OnLostFocus();
    }
  };
  const auto pick = [this](ComboBox& box) {
    if (ScopeIsReachable() && box.ListCount() > 0) box.SetListIndex(dice_.UpTo(box.ListCount() - 1));
  };
  Add("add a folder that is there", 12, [this, &frm] {
    if (!ScopeIsReachable()) return;
    frm.txtPath.SetText(dice_.Pick(kDataFolders));
    Click(frm.cmdAdd);
  });
  Add("type a folder", 3, [type, &frm] { type(frm.txtPath, kTypedFolders); });
  Add("type a pattern", 2, [type, &frm] { type(frm.txtExt, kPatterns); });
  Add("choose a folder of the history", 1, [pick, &frm] { pick(frm.txtPath); });
  Add("choose a pattern of the history", 2, [pick, &frm] { pick(frm.txtExt); });
  Add("type the least size", 1, [type, &frm] { type(frm.txtMinSz, kSizes); });
  Add("type the greatest size", 1, [type, &frm] { type(frm.txtMaxSz, kSizes); });
  Add("clear the sizes", 3, [this, &frm] {
    if (!ScopeIsReachable()) return;
    frm.txtMinSz.Text = "";
    frm.txtMaxSz.Text = "";
  });
  Add("choose a date", 1, [this, &frm] {
    if (ScopeIsReachable()) frm.cmbDate.Choose(dice_.UpTo(frm.cmbDate.ListCount() - 1));
  });
  Add("type a date", 1, [type, &frm] { type(frm.txtDate, kDates); });
  Add("choose the area", 2, [this, &frm] {
    if (ScopeIsReachable()) frm.cmbSrchArea.Choose(dice_.UpTo(1));
  });
  Add("tick sub-folders", 1, [this, &frm] { Toggle(frm.chkSubDir, ScopeIsReachable()); });
  Add("tick exclude", 1, [this, &frm] { Toggle(frm.chkExclude, ScopeIsReachable()); });
  Add("Add", 3, [this, &frm] { Click(frm.cmdAdd, ScopeIsReachable()); });
  Add("Remove", 2, [this, &frm] { Click(frm.cmdRemove, ScopeIsReachable()); });
  Add("Browse", 1, [this, &frm] { Click(frm.cmdBrowseFolder, ScopeIsReachable()); });
  Add("choose a tab of the folder's", 1, [this, &frm] { frm.TabPath.Select(1 + dice_.UpTo(3)); });
  Add("select a folder's row", 3, [this, &frm] {
    if (frm.lstPath.Count() > 0) frm.lstPath.SetSelected(1 + dice_.UpTo(frm.lstPath.Count() - 1), dice_.OneIn(2));
  });
  Add("drop folders", 2, [this, &frm] {
    if (ScopeIsReachable()) frm.lstPath.OnDrop({dice_.Pick(kTypedFolders), dice_.Pick(kDataFolders)});
  });
}

}  // namespace tresmor::soak
