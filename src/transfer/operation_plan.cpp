#include "transfer/operation_plan.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace tresmor {

namespace {

bool IsFull(std::string_view path, PathStyle style) {
  return path.starts_with(style.separator) || (style.separator == '\\' && path.size() > 1 && path[1] == ':');
}

// The names on the way from a folder to what lies below it. ".." takes back the name in front of it, by the text alone,
// since what it means on the disk is told by links that lie elsewhere. None where the way leads to no place below.
std::vector<std::string_view> NamesOn(std::string_view way, PathStyle style) {
  std::vector<std::string_view> names;
  while (!way.empty()) {
    const std::size_t end = std::min(way.find(style.separator), way.size());
    const std::string_view name = way.substr(0, end);
    way.remove_prefix(std::min(end + 1, way.size()));
    if (name.empty() || name == ".") continue;
    if (name != "..") {
      names.push_back(name);
    } else if (names.empty()) {
      return {};
    } else {
      names.pop_back();
    }
  }
  return names;
}

// Gives the item the place `to`, which has to lie below the destination.
void AssignPlace(PlanItem& item, const std::string& base, std::string_view to, PathStyle style) {
  std::vector<std::string_view> names;
  if (LiesBelow(to, base, style)) names = NamesOn(to.substr(base.size()), style);
  if (names.empty()) {
    item.trouble = {OperationCode::BadName, std::string(to) + " does not lie in the destination " + base};
    return;
  }
  item.name = names.back();
  names.pop_back();
  item.folder = base;
  for (const std::string_view name : names) item.folder = JoinPath(item.folder, name, style);
}

Trouble CheckPlaces(const OperationPlan& plan, std::size_t sources, const std::vector<std::string>& places,
                    PathStyle style) {
  if (!IsFull(plan.base, style)) return {OperationCode::BadName, "the destination is no full path"};
  if (places.size() != sources) return {OperationCode::BadName, "there are not as many destinations as files"};
  return {};
}

}  // namespace

std::vector<std::string> ListedPaths(std::string_view list) {
  std::vector<std::string> paths;
  if (list.ends_with('\0')) list.remove_suffix(1);
  while (!list.empty()) {
    paths.emplace_back(StripNul(list));
    list.remove_prefix(std::min(paths.back().size() + 1, list.size()));
  }
  return paths;
}

OperationPlan MakePlan(const ShFileOpStruct& operation, PathStyle style) {
  OperationPlan plan;
  const std::vector<std::string> sources = ListedPaths(operation.pFrom);
  std::vector<std::string> places;
  if (operation.wFunc < FO_MOVE || operation.wFunc > FO_RENAME) {
    plan.trouble = {OperationCode::BadName, "there is no operation " + std::to_string(operation.wFunc)};
  }
  if (sources.empty()) plan.trouble = {OperationCode::BadName, "no file was named"};
  if (operation.wFunc != FO_DELETE) {
    plan.base = WithoutTail(operation.destination, style);
    places = operation.fFlags & FOF_MULTIDESTFILES
                 ? ListedPaths(operation.pTo)
                 : std::vector<std::string>(sources.size(), WithoutTail(StripNul(operation.pTo), style));
    if (!plan.trouble) plan.trouble = CheckPlaces(plan, sources.size(), places, style);
  }
  if (plan.trouble) return plan;
  std::unordered_set<std::string> seen;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    PlanItem item;
    item.from = WithoutTail(sources[i], style);
    if (!seen.insert(style.Key(item.from)).second) continue;
    if (!IsFull(item.from, style)) item.trouble = {OperationCode::BadName, "it is no full path"};
    if (!places.empty()) {
      const bool whole = operation.fFlags & FOF_MULTIDESTFILES;
      AssignPlace(item, plan.base, whole ? places[i] : JoinPath(places[i], GetFileNameOf(item.from, style), style),
                  style);
    }
    plan.items.push_back(std::move(item));
  }
  return plan;
}

}  // namespace tresmor
