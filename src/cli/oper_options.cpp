#include "cli/oper_options.h"

#include <utility>

#include "cli/option_parts.h"

namespace tresmor {
namespace {

constexpr char kOperFooter[] =
    "Without --yes nothing is done: how many files it would be, which folders would go too, and which groups would\n"
    "keep no file, is printed. 'tresmor-cli show SESSION' puts a '*' in front of the marked files.\n"
    "Rows whose files have gone leave the list, which is saved in SESSION.\n"
    "\n"
    "Exit status: 0 done, 1 done but files were skipped or failed, 2 wrong use, 3 failed, such as a file that is no\n"
    "session, 130 cancelled. Ctrl-C ends it after the file in hand; SESSION is saved then too.";

constexpr char kUndoFooter[] =
    "What is no longer where it was put, was changed there, or whose old place is taken, is told and left alone.\n"
    "Copies and what was deleted for good aren't undone. Sessions stay without the rows that went: to have them "
    "again,\n"
    "search with 'tresmor-cli run SESSION --save SESSION'.\n"
    "\n"
    "Exit status: 0 all is back, 1 something could not be put back, 3 failed, 130 cancelled.";

std::pair<const char*, const char*> NameAndHelp(FileAction action) {
  switch (action) {
    case FileAction::Trash:
      return {"trash", "Move the marked files of a session to the trash"};
    case FileAction::Delete:
      return {"delete", "Delete the marked files of a session for good"};
    case FileAction::Move:
      return {"move", "Move the marked files of a session to a folder"};
    case FileAction::Copy:
      break;
  }
  return {"copy", "Copy the marked files of a session to a folder"};
}

}  // namespace

CLI::App& AddOper(CLI::App& app, OperOptions& options) {
  const auto [name, help] = NameAndHelp(options.action);
  CLI::App& oper = *app.add_subcommand(name, help);
  AddSession(oper, options.session);
  if (options.HasDestination()) {
    oper.add_option("DEST", options.destination, "The folder that they go to")->type_name("")->required();
  }
  AddList(oper, options.list);
  if (options.HasDestination()) {
    oper.add_flag("--structure", options.structure, "Keep the folders of the files below DEST");
  }
  CLI::Option* removeEmpty = oper.add_flag("--remove-empty", options.removeEmpty,
                                           "Then move their folders, with the sub-folders, to the trash if no file is "
                                           "left there");
  if (!options.TakesAway()) removeEmpty->group("");  // not offered, but refused with a reason
  oper.add_flag("--yes", options.yes, "Do it");
  if (options.TakesAway()) {
    oper.add_flag("--no-verify", options.noVerify, "Don't compare duplicates with a file that stays before they go");
    oper.add_flag("--allow-all", options.allowAll, "Don't skip groups of duplicates that would keep no file");
  }
  oper.footer(kOperFooter);
  return oper;
}

CLI::App& AddUndo(CLI::App& app) {
  CLI::App& undo = *app.add_subcommand("undo", "Put back what the last trash or move did");
  undo.footer(kUndoFooter);
  return undo;
}

OperOptions Settle(OperOptions options) {
  if (options.removeEmpty && !options.TakesAway()) {
    throw WrongUse("copy: --remove-empty is not for copies, since they leave no folder empty.");
  }
  return WithoutGuards(std::move(options), &OperOptions::session, &OperOptions::destination);
}

}  // namespace tresmor
