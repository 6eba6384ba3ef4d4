#include "shell/frm_help.h"

#include "base/path.h"
#include "desk/options.h"
#include "persist/whole_file.h"
#include "search/file_helpers.h"

namespace tresmor {
namespace {

constexpr int kTitleColumnWidth = 2540;  // at least

bool IsOnTheNet(std::string_view link) {
  return link.starts_with("http://") || link.starts_with("https://") || link.starts_with("mailto:");
}

std::string FoundText(const std::string& query, std::size_t pages) {
  if (HelpSearch::IsBlank(query)) return "Contents";
  return std::to_string(pages) + (pages == 1 ? " page" : " pages") + " found";
}

}  // namespace

FrmHelp::FrmHelp(const HelpPorts& ports, std::string folder)
    : ports_(ports), folder_(std::move(folder)), inDialog_(ports.dialogs) {
  Visible = false;
  HelpContextID = kOverviewHelp;
  lblFound.Caption = FoundText("", 0);
  lstPages.AddColumn({"Pages", kTitleColumnWidth});
  lstPages.OnItemClick = [this] { OpenRow(lstPages.SelectedItem()); };
  lstPages.OnClick = [this] { SelectRow(); };  // a click beside the rows has selected none
  for (auto* const event : {&lstPages.OnItemClick, &lstPages.OnClick}) inDialog_.BindPassive(*event);
  txtFind.Listen([this](const Notice& notice) {
    if (notice.what == Notice::What::Text && notice.when == Notice::When::After) ListPages();
  });
}

std::string FrmHelp::PathOf(std::string_view address) const {
  return JoinPath(folder_, HelpFileOf(address), ports_.files.Style());
}

void FrmHelp::Show(const HelpTopic& topic) {
  if (!Open(HelpAddress(topic))) return;
  if (search_.IsEmpty()) LoadPages();
  txtFind.Text = "";
  Visible = true;
  Tell(Notice::What::ToFront, Notice::When::After);
}

// A page that can't be read is found by its title alone.
void FrmHelp::LoadPages() {
  for (const HelpPage& page : HelpPages()) {
    std::string html;
    PassOverFailure([&] { html = ReadWholeFile(ports_.files, PathOf(page.file)); });
    search_.Add(page.title, html);
  }
  ListPages();
}

void FrmHelp::ListPages() {
  listed_ = search_.Find(txtFind.Text());
  lstPages.Clear();
  for (const std::size_t page : listed_) lstPages.AddRow(HelpPages()[page].title);
  lblFound.Caption = FoundText(txtFind.Text(), listed_.size());
  SelectRow();
}

void FrmHelp::SelectRow() {
  for (std::int32_t row = 1; row <= lstPages.Count(); ++row) {
    lstPages.SetSelected(row, HelpPages()[listed_[static_cast<std::size_t>(row - 1)]].file == HelpFileOf(address_));
  }
}

bool FrmHelp::Open(const std::string& address) {
  const std::string path = PathOf(address);
  const bool isThere = ExistsFile(ports_.files, path);
  if (isThere) {
    Announce(Notice::What::Value, 0, 0, [&] { address_ = address; });
  } else {
    ports_.dialogs.MessageBox(BoxText("The help can't be shown, since this file of it is missing:\r\n\r\n").Name(path),
                              BoxIcon::Exclamation, "Help", BoxButtons::Ok);
  }
  SelectRow();
  return isThere;
}

void FrmHelp::OpenRow(std::int32_t row) {
  if (row != 0) Open(HelpPages()[listed_.at(static_cast<std::size_t>(row - 1))].file);
}

void FrmHelp::OpenFirst() {
  if (lstPages.Count() > 0) OpenRow(1);
}

void FrmHelp::Follow(const std::string& link) {
  if (IsOnTheNet(link)) {
    ports_.shell.OpenUrl(link);
  } else {
    Open(link);
  }
}

void FrmHelp::Arrived(const std::string& address) {
  address_ = address;
  SelectRow();
}

}  // namespace tresmor
