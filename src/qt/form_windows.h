// The windows of the program's dialogs, one for each kind of form. A form outlives its window.
#pragma once

#include <memory>

#include "desk/guarded_msg.h"
#include "fileops/frm_file_oper.h"
#include "fileops/frm_file_progress.h"
#include "marker/frm_smart_del.h"
#include "qt/form_dialog.h"
#include "results/list_tip.h"
#include "shell/frm_help.h"
#include "shell/frm_options.h"
#include "shell/frm_tip.h"

namespace tresmor {

std::unique_ptr<FormDialog> Build(FrmMyMsgBox& form, const Binder& binder);
std::unique_ptr<FormDialog> Build(FrmFileOper& form, const Binder& binder);
std::unique_ptr<FormDialog> Build(FrmFileProgress& form, const Binder& binder);
std::unique_ptr<FormDialog> Build(FrmOptions& form, const Binder& binder);
std::unique_ptr<FormDialog> Build(FrmTip& form, const Binder& binder);
std::unique_ptr<FormDialog> Build(FrmHelp& form, const Binder& binder);
// `tips` has the hover texts of the form's list.
std::unique_ptr<FormDialog> Build(FrmSmartDel& form, const Binder& binder, const ListTip& tips);

}  // namespace tresmor
