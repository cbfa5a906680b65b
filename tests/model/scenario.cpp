// Stories about desktops: mostly ordinary ones, with everything now and then that an application or a desktop can get wrong.
#include "model/scenario.h"

#include <algorithm>
#include <array>
#include <map>
#include <nlohmann/json.hpp>

#include "model/dice.h"

namespace tilora::model {
namespace {

using simulated::Settability;
using simulated::WindowTraits;

constexpr auto titles = std::to_array<const char*>(
    {"Notes", "NOTES", "notes\u00a0", " Mail ", "Été", "ÉTÉ", "Ж\u3000", "", "  \t\n", "Ω", "axid:notes", "<empty>"});
constexpr auto identifiers = std::to_array<const char*>({"main", " Main\r\n", "INSPECTOR", "  ", "", "title:notes"});
constexpr auto bundles = std::to_array<const char*>({"com.example.notes", "com.example.mail", "com.example.Mail", ""});
constexpr auto names = std::to_array<const char*>({"Notes", "com.example.mail", ""});
constexpr auto placements = std::to_array<const char*>({"left", "right", "full", "floatCenter"});
constexpr auto identities =
    std::to_array<const char*>({"", "||title:notes", "||notes", "||title:été", "||été", "||title:<untitled>", "||<untitled>", "||axid:main",
                                "||role:axwindow||axstandardwindow", "||role:axwindow||<none>"});
constexpr auto paddings = std::to_array<double>({0, 10, 12, 7.5, 100, 1000, -5});

AttributeValue number(std::int64_t value) { return Number(value); }

/// A truth value in one of the forms in which it is told, or something else altogether.
std::optional<AttributeValue> randomTruth(Dice& dice) {
  const auto forms = std::to_array<std::optional<AttributeValue>>(
      {false, true, number(0), number(1), number(-3), Number(0.0), Number(0.5), ForeignValue{}, std::string("true"), std::nullopt});
  return dice.oneOf(forms);
}

/// A multiple of half a point.
double coordinate(Dice& dice, double low, double high) {
  return low + 0.5 * static_cast<double>(dice.below(static_cast<std::size_t>(2 * (high - low))));
}

Point randomPosition(Dice& dice) { return {coordinate(dice, -500, 4000), coordinate(dice, -500, 2000)}; }

Size randomSize(Dice& dice) {
  if (dice.percent(90)) return {coordinate(dice, 50, 2500), coordinate(dice, 50, 1500)};
  const auto lengths = std::to_array<double>({0, -100, 1, 300, 100'000});
  return {dice.oneOf(lengths), dice.oneOf(lengths)};
}

std::optional<AttributeValue> randomAttribute(AttributeName name, Dice& dice) {
  const bool isOdd = dice.percent(8);
  if (isOdd && dice.percent(50)) return std::nullopt;
  if (isOdd && name != AttributeName::windowNumber) return ForeignValue{};
  switch (name) {
    case AttributeName::role:
      return std::string(isOdd ? "AXSheet" : "AXWindow");
    case AttributeName::subrole:
      return std::string(isOdd || dice.percent(5) ? "AXDialog" : "AXStandardWindow");
    case AttributeName::minimized:
    case AttributeName::hidden:
      return randomTruth(dice);
    case AttributeName::position:
      return randomPosition(dice);
    case AttributeName::size:
      return randomSize(dice);
    case AttributeName::title:
      return std::string(dice.oneOf(titles));
    case AttributeName::identifier:
      return std::string(dice.oneOf(identifiers));
    case AttributeName::windowNumber:
      // From a small range: two windows may then share one.
      return dice.percent(20) ? AttributeValue(Number(static_cast<double>(dice.below(30)) + 0.5))
                              : number(static_cast<std::int64_t>(dice.below(30)));
    case AttributeName::focusedWindow:
    case AttributeName::windows:
      break;
  }
  return std::nullopt;
}

std::optional<simulated::WindowId> maybe(bool really, simulated::WindowId id) { return really ? std::optional(id) : std::nullopt; }

WindowServerEntry randomServerEntry(ProcessId pid, Dice& dice) {
  WindowServerEntry entry;
  if (dice.percent(80)) entry.ownerPid = dice.percent(80) ? pid : pid + 1;
  if (dice.percent(80)) entry.bounds = Rect{10, 10, coordinate(dice, 100, 900), coordinate(dice, -100, 900)};
  return entry;
}

WindowTraits randomWindow(const Step& step) {
  Dice dice(step.seed);
  const bool isOrdinary = dice.percent(70);
  WindowTraits traits;
  const auto give = [&](AttributeName name, AttributeValue ordinary) {
    traits.attributes[name] = isOrdinary ? std::optional(std::move(ordinary)) : randomAttribute(name, dice);
  };
  give(AttributeName::role, std::string("AXWindow"));
  give(AttributeName::subrole, std::string("AXStandardWindow"));
  give(AttributeName::title, std::string(dice.oneOf(titles)));
  give(AttributeName::position, randomPosition(dice));
  give(AttributeName::size, randomSize(dice));
  give(AttributeName::windowNumber, number(static_cast<std::int64_t>(100 + step.id)));
  if (dice.percent(30)) traits.attributes[AttributeName::identifier] = randomAttribute(AttributeName::identifier, dice);
  if (dice.percent(10)) traits.attributes[AttributeName::minimized] = randomTruth(dice);
  if (dice.percent(80)) traits.attributes[AttributeName::hidden] = isOrdinary ? std::optional<AttributeValue>(false) : randomTruth(dice);

  const auto mostly = [&](std::size_t chance) {
    if (dice.percent(chance)) return Settability::yes;
    return dice.percent(50) ? Settability::no : Settability::error;
  };
  traits.settable[AttributeName::position] = mostly(95);
  traits.settable[AttributeName::size] = mostly(75);
  traits.settable[AttributeName::hidden] = mostly(75);
  traits.hash = 1000 + step.id;
  if (dice.percent(50)) traits.server = randomServerEntry(step.pid, dice);
  traits.listed = dice.percent(97);
  if (dice.percent(30)) traits.at = 0;
  return traits;
}

simulated::ApplicationTraits randomApplication(std::uint64_t seed) {
  Dice dice(seed);
  simulated::ApplicationTraits traits;
  if (dice.percent(90)) traits.bundle = dice.oneOf(bundles);
  if (dice.percent(80)) traits.name = dice.oneOf(names);
  if (dice.percent(8)) traits.policy = dice.percent(50) ? ActivationPolicy::accessory : ActivationPolicy::prohibited;
  traits.hidden = dice.percent(15);
  return traits;
}

Screen randomScreen(const Step& step) {
  Dice dice(step.seed);
  const double left = 1440.0 * static_cast<double>(step.id - 1) + (dice.percent(10) ? 0.4 : 0.0);
  const auto heights = std::to_array<double>({900, 1200, 600.5});
  const auto bottoms = std::to_array<double>({0, 0, -300, 150.25, -2000});
  Screen screen;
  screen.frame = {left - (dice.percent(10) ? 1440 : 0), dice.oneOf(bottoms), 1440, dice.oneOf(heights)};
  screen.visibleFrame = {screen.frame.x, screen.frame.y + (dice.percent(30) ? 60 : 0), 1440, screen.frame.height - 85};
  // Two of them may name the same display.
  const auto numbers = std::to_array<std::optional<std::uint64_t>>({step.id, step.id, step.id, std::nullopt, (std::uint64_t{1} << 32) + 1});
  screen.number = dice.oneOf(numbers);
  return screen;
}

void changeWindow(const Step& step, simulated::SimulatedDesktop& desktop) {
  constexpr auto changing = std::to_array<AttributeName>(
      {AttributeName::position, AttributeName::position, AttributeName::size, AttributeName::title, AttributeName::title,
       AttributeName::hidden, AttributeName::hidden, AttributeName::minimized, AttributeName::minimized, AttributeName::identifier,
       AttributeName::role, AttributeName::subrole, AttributeName::windowNumber});
  Dice dice(step.seed);
  const auto name = dice.oneOf(changing);
  if (dice.percent(15)) {
    constexpr auto answers = std::to_array<Settability>({Settability::no, Settability::yes, Settability::error});
    desktop.setSettable(step.id, name, dice.oneOf(answers));
  } else {
    desktop.setAttribute(step.id, name, randomAttribute(name, dice));
  }
}

/// Who is there at some point of a story that is being told.
class Teller {
 public:
  explicit Teller(std::uint64_t seed) : dice_(seed) {}

  std::vector<Step> tell(std::size_t length) {
    const std::size_t screens = 1 + dice_.below(3);
    for (std::size_t id = 1; id <= screens; ++id) say(StepKind::setScreen, 0, id);
    say(StepKind::launch, dice_.percent(50) ? ownPid : 2);
    for (std::size_t left = 1 + dice_.below(4); left > 0; --left) launch();
    for (std::size_t left = dice_.below(10); left > 0; --left) open();
    while (steps_.size() < length) next();
    return std::move(steps_);
  }

 private:
  void say(StepKind kind, ProcessId pid = 0, std::uint64_t id = 0) { steps_.push_back({kind, pid, id, dice_.next()}); }

  void launch() {
    pids_.push_back(static_cast<ProcessId>(100 + pids_.size()));
    say(StepKind::launch, pids_.back());
  }
  ProcessId anyPid() { return dice_.percent(3) ? ownPid : dice_.oneOf(pids_); }

  void open() {
    const std::uint64_t id = owners_.size() + 1;
    owners_[id] = anyPid();
    say(StepKind::open, owners_[id], id);
  }
  std::uint64_t anyWindow() { return owners_.empty() ? 0 : 1 + dice_.below(owners_.size()); }

  void focus() {
    const auto id = anyWindow();
    const bool isOwners = id != 0 && dice_.percent(97);
    say(StepKind::focus, isOwners ? owners_[id] : anyPid(), id);
  }

  void next() {
    const auto roll = dice_.below(100);
    if (roll < 30) return focusAndPass();
    if (roll < 50) return say(StepKind::command);
    if (roll < 60) return say(StepKind::pass);
    if (roll < 70) return open();
    if (roll < 84) return say(StepKind::changeWindow, 0, anyWindow());
    if (roll < 88) return say(StepKind::close, 0, anyWindow());
    happenRarely();
  }

  void focusAndPass() {
    focus();
    say(StepKind::pass);
  }

  void happenRarely() {
    constexpr auto rare = std::to_array<StepKind>({StepKind::setScreen, StepKind::removeScreen, StepKind::setMainScreen, StepKind::launch,
                                                   StepKind::quit, StepKind::setApplicationHidden, StepKind::setWindowsUnreadable,
                                                   StepKind::focusNothing, StepKind::setButtons, StepKind::setButtons, StepKind::setTrust,
                                                   StepKind::setBoxing, StepKind::setPadding, StepKind::restart});
    const auto kind = dice_.oneOf(rare);
    if (kind == StepKind::launch && pids_.size() < 8) return launch();
    say(kind, anyPid(), 1 + dice_.below(3));
  }

  Dice dice_;
  std::vector<Step> steps_;
  std::vector<ProcessId> pids_;
  std::map<std::uint64_t, ProcessId> owners_;
};

constexpr auto kindNames = std::to_array<const char*>(
    {"screen", "remove screen", "main screen", "launch", "quit", "hide or show application", "list of windows unreadable or readable",
     "open", "close", "change", "focus", "focus nothing", "buttons", "trust", "boxing", "padding", "restart", "pass", "command"});

struct ValuePrinter {
  std::ostream& out;

  void operator()(const ForeignValue&) const { out << "something else"; }
  void operator()(bool value) const { out << (value ? "true" : "false"); }
  void operator()(const Number& value) const {
    std::visit([&](auto stored) { out << stored; }, value.stored());
  }
  void operator()(const std::string& value) const { out << nlohmann::json(value); }
  void operator()(Point value) const { out << '(' << value.x << ", " << value.y << ')'; }
  void operator()(Size value) const { out << value.width << " x " << value.height; }
  void operator()(const Element&) const { out << "an element"; }
  void operator()(const std::vector<Element>&) const { out << "elements"; }
};

void print(std::ostream& out, const WindowTraits& traits) {
  constexpr auto answers = std::to_array<const char*>({"", "settable", "asking fails"});
  for (std::size_t index = 0; index < attributeNameCount; ++index) {
    const auto name = static_cast<AttributeName>(index);
    const auto& value = traits.attributes[name];
    const auto settable = traits.settable[name];
    if (!value && settable == Settability::no) continue;
    out << ", " << text(name) << ' ';
    if (value) std::visit(ValuePrinter{out}, *value);
    out << ' ' << answers[static_cast<std::size_t>(settable)];
  }
  if (!traits.listed) out << ", not listed";
}

void print(std::ostream& out, const Rect& rect) { out << '(' << rect.x << ", " << rect.y << ") " << rect.width << " x " << rect.height; }

void print(std::ostream& out, const Screen& screen) {
  print(out << " frame ", screen.frame);
  print(out << " visible ", screen.visibleFrame);
  if (screen.number) out << " number " << *screen.number;
}

}  // namespace

std::vector<Step> randomScenario(std::uint64_t seed, std::size_t length) { return Teller(seed).tell(length); }

void happen(const Step& step, simulated::SimulatedDesktop& desktop) {
  Dice dice(step.seed);
  switch (step.kind) {
    case StepKind::setScreen:
      return desktop.screens().set(step.id, randomScreen(step));
    case StepKind::removeScreen:
      return desktop.screens().remove(step.id);
    case StepKind::setMainScreen:
      return desktop.screens().setMain(maybe(dice.percent(80), step.id));
    case StepKind::launch:
      desktop.addApplication(step.pid, randomApplication(step.seed));
      return;
    case StepKind::quit:
      return desktop.quit(step.pid, dice.percent(30));
    case StepKind::setApplicationHidden:
      return desktop.setHidden(step.pid, dice.percent(50));
    case StepKind::setWindowsUnreadable:
      return desktop.setWindowsUnreadable(step.pid, dice.percent(50));
    case StepKind::open:
      desktop.addWindow(step.id, step.pid, randomWindow(step));
      return;
    case StepKind::close:
      return desktop.close(step.id);
    case StepKind::changeWindow:
      return changeWindow(step, desktop);
    case StepKind::focus:
      desktop.setFrontmost(step.pid);
      return desktop.setFocusedWindow(step.pid, maybe(step.id != 0 && dice.percent(97), step.id));
    case StepKind::focusNothing:
      return desktop.setFrontmost(std::nullopt);
    case StepKind::setButtons:
      desktop.pointer().buttons = dice.below(4);
      return;
    case StepKind::setTrust:
      desktop.trust().trusted = dice.percent(70);
      return;
    case StepKind::setBoxing:
      return desktop.setBoxing(dice.percent(70), dice.percent(70));
    case StepKind::setPadding:
    case StepKind::restart:
    case StepKind::pass:
    case StepKind::command:
      return;
  }
}

double paddingOf(const Step& step) { return Dice(step.seed).oneOf(paddings); }

std::string placementOf(const Step& step) {
  Dice dice(step.seed);
  return dice.percent(70) ? placements[dice.below(2)] : dice.oneOf(placements);
}

std::string storedPreferences(std::uint64_t seed) {
  Dice dice(seed);
  auto object = nlohmann::json::object();
  for (std::size_t left = dice.percent(50) ? 0 : dice.below(8); left > 0; --left) {
    const std::string application = dice.percent(90) ? dice.oneOf(bundles) : "pid:101";
    object[application + dice.oneOf(identities)] = dice.oneOf(placements);
  }
  // Once in a while one application has many, as one does whose titles are always new.
  for (std::size_t left = dice.percent(15) ? 30 : 0; left > 0; --left) {
    object[std::string(bundles[0]) + "||title:page " + std::to_string(left)] = dice.oneOf(placements);
  }
  return object.dump();
}

std::ostream& operator<<(std::ostream& out, const Step& step) {
  out << kindNames[static_cast<std::size_t>(step.kind)];
  if (step.pid != 0) out << " pid " << step.pid;
  if (step.id != 0) out << " id " << step.id;
  if (step.kind == StepKind::open) print(out, randomWindow(step));
  if (step.kind == StepKind::setScreen) print(out, randomScreen(step));
  if (step.kind == StepKind::setPadding) out << ' ' << paddingOf(step);
  if (step.kind == StepKind::command) out << ' ' << placementOf(step);
  return out << " (seed " << step.seed << ')';
}

}  // namespace tilora::model
