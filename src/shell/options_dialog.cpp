#include "shell/options_dialog.h"

#include "base/failure.h"
#include "desk/history.h"

namespace tresmor {

void OptionsDialog::Show() {
  FrmOptions frm;
  ActionDispatch inDialog(ports_.dialogs);
  Load(frm);
  Bind(frm, inDialog);
  frm.Visible = true;
  ports_.forms.ShowModal(frm);
}

// A number from the settings that no box can show leaves its box off.
void OptionsDialog::Load(FrmOptions& frm) const {
  PassOverFailure([&] { frm.chkLoadTipsAtStartup.Value = owner_.options.ShowTipsOpt; });
  PassOverFailure([&] { frm.chkNoTooltips.Value = owner_.options.NoTooltipsOpt; });
  frm.txtEditor.Text = owner_.options.DefaultEditorOpt;
}

void OptionsDialog::Bind(FrmOptions& frm, ActionDispatch& inDialog) {
  frm.OKButton.OnClick = [this, &frm] { Ok(frm); };
  frm.CancelButton.OnClick = [&frm] { frm.Visible = false; };
  frm.cmdBrowse.OnClick = [this, &frm] { Browse(frm); };
  frm.cmdClrHist.OnClick = [this] { ClrHistory(ports_.settings, owner_.txtPath, owner_.txtExt, owner_.presets); };
  frm.cmdResetTips.OnClick = [this] { ResetTips(); };
  for (Button* const button : {&frm.OKButton, &frm.CancelButton, &frm.cmdBrowse, &frm.cmdClrHist, &frm.cmdResetTips}) {
    inDialog.BindAction(button->OnClick);
  }
}

void OptionsDialog::Ok(FrmOptions& frm) {
  Options& options = owner_.options;
  if (frm.chkNoTooltips.Value() != options.NoTooltipsOpt) {
    frm.chkNoTooltips.Ticked() ? owner_.RemoveTooltips() : owner_.InitTooltips();
  }
  options.ShowTipsOpt = frm.chkLoadTipsAtStartup.Value();
  options.NoTooltipsOpt = frm.chkNoTooltips.Value();
  options.DefaultEditorOpt = frm.txtEditor.Text();
  frm.Visible = false;
}

void OptionsDialog::Browse(FrmOptions& frm) {
  const auto file = ports_.dialogs.OpenFileDlg({.mode = FileDialogMode::Open,
                                                .title = "Default editor",
                                                .filters = {{"Executables (*.exe)", "*.exe"}, {"All Files", "*.*"}},
                                                .defaultExtension = "EXE",
                                                .startName = owner_.options.DefaultEditorOpt,
                                                .startFolder = owner_.options.DefaultEditorOpt});
  if (file && !file->empty()) frm.txtEditor.Text = *file;
}

// Who was told once that a search takes long stays told.
void OptionsDialog::ResetTips() {
  Options& options = owner_.options;
  options.DontShowTipOrgNDup = 0;
  options.DontShowTipOrgNDupSM = 0;
  options.DontShowTipSmartMark = 0;
  options.DontShowWarmProtWin = 0;
  options.DontShowSrchPersonal = 0;
  ports_.dialogs.MessageBox("Warnings and tips will be shown again.", BoxIcon::Information, "Reset warnings and tips",
                            BoxButtons::Ok);
}

}  // namespace tresmor
