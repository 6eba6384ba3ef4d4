#include "transfer/operation_plan.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace tresmor {

namespace {

bool IsFull(std::string_view path, PathStyle style) {
  return path.starts_with(style.separator) || (style.separator == '\\' && path.size() > 1 && path[1] == ':');
}

// Gives the item the place `to`, which has to lie below the destination.
void AssignPlace(PlanItem& item, const std::string& base, std::string_view to, PathStyle style) {
  const Trouble outside = {OperationCode::BadName, std::string(to) + " does not lie in the destination " + base};
  if (!LiesBelow(to, base, style)) {
    item.trouble = outside;
    return;
  }
  item.folder = base;
  for (std::string_view rest = to.substr(base.size()); !rest.empty();) {
    const std::size_t end = std::min(rest.find(style.separator), rest.size());
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (part.empty() || part == ".") continue;
    if (part == "..") item.trouble = outside;
    if (!item.name.empty()) item.folder = JoinPath(item.folder, item.name, style);
    item.name = part;
  }
  if (item.name.empty()) item.trouble = outside;
}

std::string BaseOf(const ShFileOpStruct& operation, PathStyle style) {
  if (!operation.destination.empty()) return WithoutTail(operation.destination, style);
  return operation.fFlags & FOF_MULTIDESTFILES ? style.Tail() : WithoutTail(StripNul(operation.pTo), style);
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
  if (operation.wFunc < FO_MOVE || operation.wFunc > FO_DELETE) {
    plan.trouble = {OperationCode::BadName, "there is no operation " + std::to_string(operation.wFunc)};
  }
  if (sources.empty()) plan.trouble = {OperationCode::BadName, "no file was named"};
  if (operation.wFunc != FO_DELETE) {
    plan.base = BaseOf(operation, style);
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
