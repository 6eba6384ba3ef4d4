#include "search/col_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tresmor {
namespace {

FolderListing ListingOf(const std::vector<std::string>& names, FileIdentity identity = {}) {
  FolderListing listing;
  listing.identity = identity;
  for (const std::string& name : names) {
    listing.entries.push_back({static_cast<std::uint32_t>(listing.names.size()),
                               static_cast<std::uint16_t>(name.size()), EntryKind::File, false});
    listing.names += name;
  }
  return listing;
}

std::vector<std::string> Paths(const ColFiles& files) {
  std::vector<std::string> paths;
  for (const ColFiles::Item& item : files.Items()) files.AppendPath(item, paths.emplace_back());
  return paths;
}

TEST(FolderTree, ComposesPathsFromTheirParts) {
  FolderTree tree;
  const FolderId top = tree.AddTop("C:\\Docs\\");
  const FolderId sub = tree.AddSub(top, "Letters", '\\');
  const FolderId deep = tree.AddSub(sub, "2003", '\\');
  const FolderId other = tree.AddTop("D:\\");
  EXPECT_EQ(tree.Path(top), "C:\\Docs\\");
  EXPECT_EQ(tree.Path(deep), "C:\\Docs\\Letters\\2003\\");
  EXPECT_EQ(tree.Path(other), "D:\\");
  std::string text = "In ";
  tree.AppendPath(sub, text);
  EXPECT_EQ(text, "In C:\\Docs\\Letters\\");
}

TEST(FolderTree, HoldsATreeOfAHundredThousandLevels) {
  FolderTree tree;
  FolderId folder = tree.AddTop("/");
  for (int i = 0; i < 100'000; ++i) folder = tree.AddSub(folder, "d", '/');
  EXPECT_EQ(tree.Path(folder).size(), 200'001u);
}

TEST(ColFiles, KeepsTheOrderAndTheFirstFlag) {
  ColFiles files(PathStyle::Posix());
  const ColFiles::Folder folder = files.AddTop("/a/");
  const ColFiles::ListingId listing = files.KeepListing(folder, ListingOf({"x", "y", "a longer name than most"}));
  files.Add(folder.id, listing, 2, true);
  files.Add(folder.id, listing, 0, false);
  files.Add(folder.id, listing, 2, false);
  EXPECT_THAT(Paths(files), testing::ElementsAre("/a/a longer name than most", "/a/x"));
  EXPECT_TRUE(files.Items()[0].isSrchTarget);
  EXPECT_FALSE(files.Items()[1].isSrchTarget);
  EXPECT_EQ(files.Count(), 2);
}

TEST(ColFiles, NamesOutliveLaterListings) {
  ColFiles files(PathStyle::Posix());
  for (int i = 0; i < 1000; ++i) {
    const ColFiles::Folder folder = files.AddTop("/" + std::to_string(i) + "/");
    files.Add(folder.id, files.KeepListing(folder, ListingOf({std::to_string(i)})), 0, true);
  }
  for (std::size_t i = 0; i < 1000; ++i) EXPECT_EQ(files.Items()[i].Name(), std::to_string(i));
}

TEST(ColFiles, FindsTheListingOfThePathHoweverItWasReached) {
  ColFiles files(PathStyle::Posix());
  const ColFiles::Folder top = files.AddTop("/a/");
  const ColFiles::Folder below = files.AddSub(files.AddSub(top, "b"), "c");
  EXPECT_EQ(files.FindListing(below), ColFiles::kNoListing);
  const ColFiles::ListingId listing = files.KeepListing(below, ListingOf({"x"}));
  EXPECT_EQ(files.FindListing(files.AddTop("/a/b/c/")), listing);
  EXPECT_EQ(files.FindListing(files.AddSub(files.AddTop("/a/b/"), "c")), listing);
  EXPECT_EQ(files.FindListing(files.AddTop("/a/b/C/")), ColFiles::kNoListing);
  EXPECT_EQ(files.FindListing(files.AddTop("/a/b/")), ColFiles::kNoListing);
}

TEST(ColFiles, FollowsTheCaseRuleOfTheStyle) {
  ColFiles files(PathStyle::Windows());
  const ColFiles::Folder first = files.AddSub(files.AddTop("C:\\Data\\"), "\u00c4pfel");
  const ColFiles::ListingId listing = files.KeepListing(first, ListingOf({"x"}));
  EXPECT_EQ(files.FindListing(files.AddTop("c:\\DATA\\\u00e4PFEL\\")), listing);
  EXPECT_EQ(files.FindListing(files.AddTop("c:\\DATA\\\u00e4PFEL\\y\\")), ColFiles::kNoListing);
}

TEST(ColFiles, NotesAFolderThatHasTwoPaths) {
  ColFiles files(PathStyle::Posix());
  const FileIdentity identity{1, 7};
  EXPECT_FALSE(files.Knows(identity));
  files.KeepListing(files.AddTop("/a/"), ListingOf({"x"}, identity));
  files.KeepListing(files.AddTop("/b/"), ListingOf({"x"}, {2, 7}));
  EXPECT_TRUE(files.Knows(identity));
  EXPECT_FALSE(files.ReachedTwice());
  files.KeepListing(files.AddTop("/c/"), ListingOf({"x"}, identity));
  EXPECT_TRUE(files.ReachedTwice());
}

TEST(ColFiles, FoldersThatCouldNotBeOpenedAreNotTheSame) {
  ColFiles files(PathStyle::Posix());
  files.KeepListing(files.AddTop("/a/"), {});
  files.KeepListing(files.AddTop("/b/"), {});
  EXPECT_FALSE(files.ReachedTwice());
  EXPECT_FALSE(files.Knows({}));
}

}  // namespace
}  // namespace tresmor
