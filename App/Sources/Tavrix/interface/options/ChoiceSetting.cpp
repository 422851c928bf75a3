#include "interface/options/ChoiceSetting.h"

#include <algorithm>
#include <array>

namespace tavrix::window {
namespace {

using Choice = ChoiceSetting::Choice;

template <std::string Choice::* part>
QStringList listOf(const std::vector<Choice>& choices) {
  QStringList list;
  for (const Choice& choice : choices) list.append(QString::fromStdString(choice.*part));
  return list;
}

template <auto field, typename Value>
Choice choiceOf(const SettingsPort& port, std::string title, Value value) {
  return {.title = std::move(title),
          .isCurrent = at(port.now(), field) == value,
          .take = [value](Settings& settings) { at(settings, field) = value; }};
}

}  // namespace

QStringList ChoiceSetting::titles() const { return listOf<&Choice::title>(choices_(port_)); }

QStringList ChoiceSetting::details() const {
  const auto choices = choices_(port_);
  const bool hasDetails = std::any_of(choices.begin(), choices.end(),
                                      [](const Choice& c) { return !c.detail.empty(); });
  return hasDetails ? listOf<&Choice::detail>(choices) : QStringList{};
}

int ChoiceSetting::current() const {
  const auto choices = choices_(port_);
  const auto found = std::find_if(choices.begin(), choices.end(), std::mem_fn(&Choice::isCurrent));
  return found == choices.end() ? -1 : static_cast<int>(found - choices.begin());
}

QString ChoiceSetting::currentTitle() const { return titles().value(current()); }

void ChoiceSetting::pick(int index) {
  const auto choices = choices_(port_);
  const auto i = static_cast<std::size_t>(index);
  if (index < 0 || i >= choices.size() || choices[i].isCurrent || !choices[i].take) return;
  port_.change(choices[i].take);
}

std::vector<Choice> editedPolicyChoices(const SettingsPort& port) {
  using enum BundleFilter::EditedPolicy;
  constexpr auto field = &Settings::Content::editedPolicy;
  const Language language = port.language();
  return {choiceOf<field>(port, say(language, sentences::editedBoth), both),
          choiceOf<field>(port, say(language, sentences::editedOnly), editedOnly),
          choiceOf<field>(port, say(language, sentences::originalsOnly), originalsOnly)};
}

std::vector<Choice> packingChoices(const SettingsPort& port) {
  constexpr auto field = &Settings::Layout::packPerGroup;
  const Language language = port.language();
  return {choiceOf<field>(port, say(language, sentences::zipOne), false),
          choiceOf<field>(port, say(language, sentences::zipPerFolder), true)};
}

std::vector<Choice> homeMonthsChoices(const SettingsPort& port) {
  constexpr auto field = &Settings::Gathering::homeWindowMonths;
  std::set<int> offered{3, 6, 12, 24, 36};
  offered.insert(port.now().gathering.homeWindowMonths);
  std::vector<Choice> choices;
  for (const int months : offered) {
    const std::string title =
        months == 0
            ? say(port.language(), sentences::homeAllMonths)
            : counted(port.language(), static_cast<std::uint64_t>(months), sentences::monthsOfHome);
    choices.push_back(choiceOf<field>(port, title, months));
  }
  return choices;
}

}  // namespace tavrix::window
