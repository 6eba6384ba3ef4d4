#include "shell/update_check.h"

#include "shell/main_menu.h"

namespace tresmor {
namespace {

constexpr int kReminderDays = 45;
constexpr char kFromProgram[] = "?from=exe";
constexpr char kLegalNotice[] = "Free software under the MIT licence, without warranty of any kind.";

std::string PageAddress(const std::string& page) { return std::string(kWebSite) + "/" + page; }

}  // namespace

void ChkUpdate(const Shell& shell, ProgramVersion version) {
  shell.OpenUrl(PageAddress("ChkUpdate.asp?Major=") + std::to_string(version.Major) +
                "&Minor=" + std::to_string(version.Minor) + "&Rev=" + std::to_string(version.Revision));
}

void RemindOfUpdate(Options& options, const std::function<DateStamp()>& now, const Shell& shell, Dialogs& dialogs,
                    ProgramVersion version) {
  if (DaysBetween(options.LastUpdateChk, now()) < kReminderDays) return;
  const std::string question = "Tresmor can check its update periodically, and you haven't checked it for more than " +
                               std::to_string(kReminderDays) +
                               " days. \r\n\r\nDo you want to check if new version available online?";
  const BoxAnswer answer = dialogs.MessageBox(question, BoxIcon::Question, "Check new version", BoxButtons::YesNo);
  if (answer == BoxAnswer::Yes) ChkUpdate(shell, version);
  options.LastUpdateChk = now();  // of the answer: the question may stand for days
}

std::string WebSiteAddress() { return PageAddress(kFromProgram); }
std::string SupportAddress() { return PageAddress("support.asp") + kFromProgram; }
std::string MailAddress() { return std::string("mailto:") + kMailAddress; }

void ShowAbout(Dialogs& dialogs, ProgramVersion version) {
  const std::string number =
      std::to_string(version.Major) + "." + std::to_string(version.Minor) + "." + std::to_string(version.Revision);
  dialogs.MessageBox("Tresmor Ver. " + number + "\r\n\r\n" + kLegalNotice + "\r\n\r\nWeb site: " + kWebSite +
                         "\r\nEmail: " + kMailAddress + "\r\n",
                     BoxIcon::Information, "About Tresmor", BoxButtons::Ok);
}

}  // namespace tresmor
