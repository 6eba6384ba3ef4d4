// The menu bar of the main window: one table of all commands that it offers.
#pragma once

#include <vector>

#include "controls/menu.h"

namespace tresmor {

// Where the product lives on the net; menus and links show these.
inline constexpr char kWebSite[] = "https://tresmor.example";
inline constexpr char kMailAddress[] = "support@tresmor.example";

struct MainMenu {
  MenuItem mnuOptions{"&Options", "", 112};
  MenuItem MnuQuit{"&Quit"};
  Menu MnuMain{"&Menu", {&mnuOptions, nullptr, &MnuQuit}};

  MenuItem mnuSrch{"&Search!", "F5", 120};
  MenuItem mnuNewSrch{"&New Search", "", 120};
  MenuItem mnuLoadResultList{"&Load Search Session", "Ctrl+L", 119};
  MenuItem mnuSaveResultList{"&Save Search Session", "Ctrl+S", 119};
  MenuItem mnuSaveAsResultList{"Save Search Session &As", "Ctrl+A", 119};
  Menu mnuSrchSession{"Search Sess&ion",
                      {&mnuSrch, &mnuNewSrch, nullptr, &mnuLoadResultList, &mnuSaveResultList, &mnuSaveAsResultList}};

  MenuItem mnuOpen{"&Open File", "Ctrl+O", 101};
  MenuItem mnuOpenEditor{"&Open with default editor", "Ctrl+E"};
  MenuItem mnuOpenFolder{"Open &Folder", "Ctrl+F", 101};
  MenuItem mnuDelete{"&Delete marked files", "Ctrl+D", 116};
  MenuItem mnuMove{"&Move marked files", "Ctrl+M", 116};
  MenuItem mnuCopy{"&Copy marked files", "", 116};
  MenuItem mnuRen{"&Rename", "Ctrl+R", 104};
  MenuItem mnuExport{"E&xport result list (CSV format)", "Ctrl+X", 114};
  MenuItem mnuPropPage{"File &Properties", "Ctrl+P", 101};
  MenuItem mnuShowVer{"Show file &version", "Ctrl+V", 101};
  MenuItem mnuSmartDel{"&Smart Marker...", "Ctrl+K", 100};
  MenuItem mnuMarkAll{"Mark &all", "Ctrl+G", 100};
  MenuItem mnuMarkSelected{"Mark Selec&ted files", "Ctrl+T", 100};
  MenuItem mnuClearMarks{"&Clear all marks", "Ctrl+C", 100};
  Menu mnuFile{"&Result Files",
               {&mnuOpen, &mnuOpenEditor, &mnuOpenFolder, &mnuDelete, &mnuMove, &mnuCopy, &mnuRen, &mnuExport, nullptr,
                &mnuPropPage, &mnuShowVer, nullptr, &mnuSmartDel, &mnuMarkAll, &mnuMarkSelected, &mnuClearMarks},
               101};

  MenuItem mnuHelp{"&Content and Index"};
  MenuItem mnuSuppForum{"Online &Support Forum", "", 107};
  MenuItem mnuWebSite{std::string("Tresmor &Web Site - ") + kWebSite};
  MenuItem mnuEmail{std::string("&Email Tresmor (") + kMailAddress + ")"};
  MenuItem mnuChkUpdate{"&Check if new version available"};
  MenuItem mnuAbout{"About Tresmor"};
  Menu mnuMainHelp{
      "&Help", {&mnuHelp, nullptr, &mnuSuppForum, &mnuWebSite, &mnuEmail, &mnuChkUpdate, nullptr, &mnuAbout}, 107};

  std::vector<Menu*> Menus() { return {&MnuMain, &mnuSrchSession, &mnuFile, &mnuMainHelp}; }
};

}  // namespace tresmor
