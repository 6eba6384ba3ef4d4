// Programs of the desktop that take up what Tresmor leaves: its trash and its spreadsheet.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QXmlStreamReader>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace tresmor::tests {

// What a command of the shell says on both its streams; it ends well.
inline std::string SaysOf(const std::string& command) {
  FILE* const pipe = popen(("( " + command + " ) 2>&1").c_str(), "re");
  std::string said;
  char piece[4096];
  while (const std::size_t size = fread(piece, 1, sizeof piece, pipe)) said.append(piece, size);
  EXPECT_EQ(pclose(pipe), 0) << command << "\n" << said;
  return said;
}

// Whether the desktop's own programs are to do their part. They take long to install, so a developer's machine may do
// without: `./test --story` has them.
inline bool HasDesktop() { return std::getenv("TRESMOR_DESKTOP") != nullptr; }

// Takes all out of the trash by what file managers use, which tells where it came from. Not by `gio trash --restore`:
// some versions leave the escapes of the list in the names. The bus is a new one, whose programs see this home folder.
inline void RestoreAllByGio() {
  SaysOf(
      "dbus-run-session -- bash -c 'gio trash --list | while IFS=$'\\''\\t'\\'' read -r place path; do"
      " gio move \"$place\" \"$(printf %b \"$path\")\" || exit; done'");
}

using Sheet = std::vector<std::vector<std::string>>;

// The table of a flat OpenDocument file, as text. A row ends behind its last cell with something in it.
inline Sheet SheetIn(const std::string& path) {
  QFile file(QString::fromStdString(path));
  EXPECT_TRUE(file.open(QFile::ReadOnly)) << path;
  QXmlStreamReader xml(&file);
  Sheet sheet;
  std::string text;
  int times = 1;
  while (!xml.atEnd()) {
    const auto token = xml.readNext();
    const auto name = xml.qualifiedName();
    if (token == QXmlStreamReader::StartElement && name == QLatin1String("table:table-row")) sheet.emplace_back();
    if (token == QXmlStreamReader::StartElement && name == QLatin1String("table:table-cell")) {
      times = std::max(1, xml.attributes().value("table:number-columns-repeated").toInt());
      // A formula shows its result, and what stands in the cell is what counts.
      text = xml.attributes().value("table:formula").toString().toStdString();
    }
    if (token == QXmlStreamReader::StartElement && name == QLatin1String("text:p")) {
      text += (text.empty() ? "" : "\n") + xml.readElementText(QXmlStreamReader::IncludeChildElements).toStdString();
    }
    if (token == QXmlStreamReader::EndElement && name == QLatin1String("table:table-cell") && !text.empty()) {
      sheet.back().insert(sheet.back().end(), static_cast<std::size_t>(times), text);
    }
  }
  EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
  return sheet;
}

// How LibreOffice Calc opens comma-separated values when told: UTF-8, and text is what stands in quotes. `folder` is
// for its own files and the result.
inline Sheet OpenedByCalc(const std::string& csv, const std::string& folder) {
  SaysOf(
      "soffice -env:UserInstallation='file://" + folder + "/calc' --headless" +
      " --infilter='Text - txt - csv (StarCalc):44,34,76,1,,0,true' --convert-to fods:'OpenDocument Spreadsheet Flat "
      "XML' --outdir '" +
      folder + "' '" + csv + "'");
  const std::size_t name = csv.find_last_of('/') + 1;
  return SheetIn(folder + "/" + csv.substr(name, csv.find_last_of('.') - name) + ".fods");
}

}  // namespace tresmor::tests
