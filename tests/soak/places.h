// Where things are on the machine that the monkey plays on.
#pragma once

namespace tresmor::soak {

inline constexpr char kSavedFolder[] = "/home/me/saved/";  // sessions and tables
inline constexpr char kStateFolder[] = "/home/me/state/";  // what the program keeps for itself
inline constexpr const char* kDataFolders[] = {"/data",       "/data/a", "/data/a/deep", "/data/b",
                                               "/data/b/odd", "/usb",    "/usb/films",   "/home/me/docs"};

}  // namespace tresmor::soak
