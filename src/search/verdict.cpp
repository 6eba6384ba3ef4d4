#include "search/verdict.h"

namespace tresmor {

Verdict::Verdict(std::span<FileProp> range, std::int32_t first, SizeRule rule, bool tolerant, std::int64_t tolBudget)
    : range_(range), first_(first), rule_(rule), tolerant_(tolerant), tolBudget_(tolBudget) {
  CloseBlock();
}

void Verdict::JudgeFirst(const Failed& failed, const Agree& agree) {
  for (int i = 0; i < Count(); ++i) {
    if (failed(i)) Group(i) = kReadError;
  }
  const auto mayMeet = [&](int i, int j) { return rule_ == SizeRule::DifferentSizes || Size(j) == Size(i); };
  std::vector<int> others;
  for (int i = 0; i < Count(); ++i) {
    if (Group(i) != kNoGroup) continue;
    others.clear();
    for (int j = i + 1; j < Count(); ++j) {
      if (Group(j) == kNoGroup && mayMeet(i, j) && Agrees(agree, i, j)) others.push_back(j);
    }
    TakeUp(i, others);
  }
  CloseBlock();
}

void Verdict::JudgeNext(const Failed& failed, const Agree& agree) {
  for (int i = 0; i < Count(); ++i) {
    if (Open(i) && failed(i)) Group(i) = kReadError;
  }
  std::vector<std::vector<int>> groups(range_.size());  // as they stand before the block, by the place of their name
  std::vector<std::size_t> origin(range_.size());
  for (int i = 0; i < Count(); ++i) {
    if (!Open(i) || Group(i) < 0) continue;
    origin[static_cast<std::size_t>(i)] = Place(Group(i));
    groups[Place(Group(i))].push_back(i);
  }
  for (int i = 0; i < Count(); ++i) {
    if (!Open(i) || Group(i) == kReadError) continue;
    const std::vector<int>& members = groups[origin[static_cast<std::size_t>(i)]];
    if (members.front() == i) {
      TestMembers(i, {members.begin() + 1, members.end()}, agree);
    } else if (Group(i) == kDropped) {
      std::vector<int> others;
      for (int j : members) {
        if (j > i && Group(j) == kDropped && Agrees(agree, i, j)) others.push_back(j);
      }
      TakeUp(i, others);
    }
  }
  CloseBlock();
}

// Whether a leader and others that agree with it make a group.
bool Verdict::MayStand(int leader, const std::vector<int>& others) const {
  if (rule_ == SizeRule::SameSize) return !others.empty();
  return std::any_of(others.begin(), others.end(), [&](int j) { return Size(j) != Size(leader); });
}

void Verdict::TakeUp(int leader, const std::vector<int>& others) {
  if (!MayStand(leader, others)) return;
  Group(leader) = first_ + leader;
  for (int j : others) Group(j) = first_ + leader;
}

// A group that lost members by failures alone is left as it is, even if only its leader remains.
void Verdict::TestMembers(int leader, const std::vector<int>& others, const Agree& agree) {
  std::vector<int> kept;
  for (int j : others) {
    if (Agrees(agree, leader, j) || ForgivesMiss()) {
      kept.push_back(j);
    } else {
      Group(j) = kDropped;
    }
  }
  if (kept.size() == others.size() || MayStand(leader, kept)) return;
  Group(leader) = kNoGroup;
  for (int j : kept) Group(j) = kNoGroup;
}

// Whoever was dropped and not taken up is out. Only records that share a group with others need reading on, and only
// where the group's leader lies in this range: nobody tests the others.
void Verdict::CloseBlock() {
  std::vector<int> members(range_.size());
  for (int i = 0; i < Count(); ++i) {
    if (Group(i) == kDropped) Group(i) = kNoGroup;
    if (Group(i) >= first_) ++members[Place(Group(i))];
  }
  open_.assign(range_.size(), false);
  for (int i = 0; i < Count(); ++i) {
    open_[static_cast<std::size_t>(i)] = Group(i) >= first_ && members[Place(Group(i))] > 1;
  }
}

}  // namespace tresmor
