#include "shell/frm_main.h"

#include "search/exec_srch.h"

namespace tresmor {

FrmMain::FrmMain() {
  lstPath.AddColumn({"Path", 5292});
  lstPath.AddColumn({"Sub-folder", 1411});
  lstPath.AddColumn({"Min. Size", 1764});
  lstPath.AddColumn({"Max. Size", 1764});
  lstPath.AddColumn({"Date", 2540});
  lstPath.AddColumn({"Search Target", 2540});
  for (const SrchType type : {SrchType::ZeroSize, SrchType::Duplicates, SrchType::SameName}) {
    lstSrchType.SetTicked(static_cast<std::int32_t>(type), true);
  }
}

}  // namespace tresmor
