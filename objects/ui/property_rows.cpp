#include "objects/ui/property_rows.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "core/readable_text.h"
#include "core/text.h"
#include "core/typed_number.h"
#include "objects/property_choices.h"

namespace mw {
namespace {

// Layout pixels.
constexpr int kLabelLeft = 10, kLabelWidth = 130, kHeadingWidth = 326;
constexpr int kValueLeft = 144, kValueWidth = 196;
constexpr int kValuesPitch = 200, kValueGap = 4;  // of values side by side: all, and between two
constexpr int kListHeight = 256, kListLineHeight = 16;

constexpr int kLongestNumber = 256;  // characters
// Percent of a letter's width, and how far each attempt at a narrower one goes.
constexpr int kNarrowest = 65, kNarrowing = 5;
constexpr int kBoxPadding = 12;  // real pixels beside the text of a box

QString Shown(const std::string& text) { return QString::fromStdString(ReadableText(text)); }
QString Shown(const PropertyField& field) { return Shown(field.label.String()); }

// Narrows the letters of a text that would not fit, as far as it can be read.
void NarrowToFit(QWidget& control, const QString& text, int width) {
  QFont font = control.font();
  for (int stretch = 100; stretch >= kNarrowest; stretch -= kNarrowing) {
    font.setStretch(stretch);
    if (QFontMetrics(font).horizontalAdvance(text) < width) break;
  }
  control.setFont(font);
}

QLabel* AddText(const RowPlace& place, int x, int width, const QString& text) {
  auto* const label = new QLabel(place.page);
  label->setGeometry(place.At(x, width));
  label->setTextFormat(Qt::PlainText);
  label->setAccessibleName(text);
  NarrowToFit(*label, text, label->width());
  label->setText(label->fontMetrics().elidedText(text, Qt::ElideRight, label->width()));
  if (label->text() != text) label->setToolTip(text);
  return label;
}

// Names a control after its field, in the tree of objects and for who cannot see the label.
void Name(QWidget& control, const RowPlace& place, const QString& name) {
  control.setObjectName(QString("row%1.%2").arg(place.row).arg(name));
  control.setAccessibleName(name);
}

// One of a row's values side by side.
QRect ValuePlace(const RowPlace& place, int index, int count) {
  return place.At(kValueLeft + kValuesPitch / count * index,
                  (kValuesPitch - kValueGap * count) / count);
}

int ValueCount(const PropertyField& field) {
  return std::clamp<int>(field.count, 1, kMaxFieldControls);
}

// A text of at most this many bytes, cut at a character's border.
std::string BoundedText(const QString& text, std::int32_t longest) {
  std::string bytes = text.toStdString();
  const std::size_t limit = static_cast<std::size_t>(std::max(longest, 0));
  if (bytes.size() <= limit) return bytes;
  std::size_t end = limit;
  while (end > 0 && (static_cast<unsigned char>(bytes[end]) & 0xC0) == 0x80) --end;
  return bytes.substr(0, end);
}

// Text.

PropertyControls AddTextBox(const RowPlace& place, const PropertyField& field,
                            const TextVariable& variable) {
  auto* const box = new QLineEdit(place.page);
  box->setGeometry(place.At(kValueLeft, kValueWidth));
  Name(*box, place, Shown(field));
  box->setMaxLength(std::max(field.count, 0));
  const QString text = Shown(variable.read());
  box->setText(text);
  box->setCursorPosition(0);
  return {[box, text] { return box->text().isEmpty() && !text.isEmpty() ? box : nullptr; },
          [&field, &variable, box, text] {
            if (box->text() != text) variable.write(BoundedText(box->text(), field.count));
          }};
}

PropertyControls AddTextRow(const RowPlace& place, const PropertyField& field) {
  const auto* const variable = std::get_if<TextVariable>(&field.value);
  if (!variable) return {};
  if (field.editable) return AddTextBox(place, field, *variable);
  QLabel* const text = AddText(place, kValueLeft, kValueWidth, Shown(variable->read()));
  text->setObjectName(QString("row%1.%2").arg(place.row).arg(Shown(field)));
  return {};
}

// Numbers.

QString ShownNumber(std::int32_t value) { return QString::number(value); }
QString ShownNumber(float value) {
  return QString::fromStdString(FormatText("%.4f", double{value}));
}

bool IsNone(std::int32_t value) { return value == kNoInteger; }
bool IsNone(float value) { return std::isnan(value); }

template <typename Number>
std::optional<Number> TypedNumber(const QString& text) {
  if constexpr (std::is_same_v<Number, float>) {
    return TypedFloat(text.toStdString());
  } else {
    return TypedInteger(text.toStdString());
  }
}

// A box and what it showed at first.
struct NumberBox {
  QLineEdit* box;
  QString shown;

  bool IsEdited() const { return box->text() != shown; }
};

QLineEdit* AddNumberBox(const RowPlace& place, const PropertyField& field, int index,
                        const QString& number) {
  const int count = ValueCount(field);
  auto* const box = new QLineEdit(place.page);
  box->setGeometry(ValuePlace(place, index, count));
  Name(*box, place, count == 1 ? Shown(field) : QString("%1 %2").arg(Shown(field)).arg(index + 1));
  box->setMaxLength(kLongestNumber);
  NarrowToFit(*box, number, box->width() - kBoxPadding);
  box->setText(number);
  box->setCursorPosition(0);
  return box;
}

template <typename Number>
PropertyControls AddNumbersRow(const RowPlace& place, const PropertyField& field) {
  Number* const* const values = std::get_if<Number*>(&field.value);
  if (!values) return {};
  std::vector<NumberBox> boxes;
  for (int i = 0; i < ValueCount(field); ++i) {
    const Number value = (*values)[i];
    const QString shown = field.mayBeEmpty && IsNone(value) ? QString() : ShownNumber(value);
    boxes.push_back({AddNumberBox(place, field, i, shown), shown});
  }
  const auto lacking = [boxes, mayBeEmpty = field.mayBeEmpty]() -> QWidget* {
    const auto isLacking = [mayBeEmpty](const NumberBox& number) {
      if (mayBeEmpty && number.box->text().trimmed().isEmpty()) return false;
      return number.IsEdited() && !TypedNumber<Number>(number.box->text());
    };
    const auto found = std::ranges::find_if(boxes, isLacking);
    return found == boxes.end() ? nullptr : found->box;
  };
  const auto store = [boxes, numbers = *values] {
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      if (!boxes[i].IsEdited()) continue;
      numbers[i] = TypedNumber<Number>(boxes[i].box->text()).value_or(numbers[i]);
    }
  };
  return {lacking, store};
}

// Choices.

QComboBox* AddList(const RowPlace& place, const PropertyField& field) {
  auto* const list = new QComboBox(place.page);
  list->setGeometry(place.At(kValueLeft, kValueWidth));
  list->setMaxVisibleItems(kListHeight / kListLineHeight);
  list->setToolTip(Shown(field));
  Name(*list, place, Shown(field));
  return list;
}

// Chooses the entry of the current value. One that the list does not offer becomes the first, with
// this text. Gives the index of the entry.
int ChooseCurrent(QComboBox& list, int index, const std::string& notOffered) {
  if (index < 0) {
    list.insertItem(0, Shown(notOffered));
    index = 0;
  }
  list.setCurrentIndex(index);
  return index;
}

PropertyControls AddNameRow(const RowPlace& place, const PropertyField& field,
                            const std::vector<std::string>& names) {
  const auto* const variable = std::get_if<TextVariable>(&field.value);
  if (!variable) return {};
  QComboBox* const list = AddList(place, field);
  const std::string current = variable->read();
  int index = -1;
  for (const std::string& name : names) {
    list->addItem(Shown(name.empty() ? NotInList(name) : name), QByteArray::fromStdString(name));
    if (EqualNoCase(name, current)) index = list->count() - 1;
  }
  index = ChooseCurrent(*list, index, NotInList(current));
  return {.store = [variable, list, index] {
    if (list->currentIndex() == index) return;
    variable->write(list->currentData().toByteArray().toStdString());
  }};
}

PropertyControls AddChoiceRow(const RowPlace& place, const PropertyField& field,
                              const std::vector<PropertyChoice>& choices) {
  std::int32_t* const* const value = std::get_if<std::int32_t*>(&field.value);
  if (!value) return {};
  QComboBox* const list = AddList(place, field);
  for (const PropertyChoice& choice : choices) {
    list->addItem(Shown(choice.text), choice.value);
  }
  const bool isEmpty = field.mayBeEmpty && IsNone(**value);
  const int index = ChooseCurrent(*list, list->findData(**value),
                                  isEmpty ? std::string() : NotInList(std::to_string(**value)));
  return {.store = [list, index, variable = *value] {
    if (list->currentIndex() != index) *variable = list->currentData().toInt();
  }};
}

PropertyControls AddGameModesRow(const RowPlace& place, const PropertyField& field) {
  GameModeChoice* const* const choices = std::get_if<GameModeChoice*>(&field.value);
  if (!choices) return {};
  const int count = ValueCount(field);
  std::vector<QCheckBox*> boxes;
  for (int i = 0; i < count; ++i) {
    const GameModeChoice& choice = (*choices)[i];
    auto* const box = new QCheckBox(QString::fromStdString(std::string(choice.label)), place.page);
    box->setObjectName(QString("row%1.%2").arg(place.row).arg(box->text()));
    box->setGeometry(place.At(kValueLeft + kValuesPitch / count * i, kValuesPitch / count));
    const int besideText =
        box->sizeHint().width() - box->fontMetrics().horizontalAdvance(box->text());
    NarrowToFit(*box, box->text(), box->width() - besideText);
    box->setTristate(choice.mixed);
    box->setCheckState(choice.mixed     ? Qt::PartiallyChecked
                       : choice.checked ? Qt::Checked
                                        : Qt::Unchecked);
    box->setEnabled(choice.enabled);
    boxes.push_back(box);
  }
  return {.store = [boxes, rows = *choices] {
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      rows[i].checked = boxes[i]->checkState() == Qt::Checked;
      rows[i].mixed = boxes[i]->checkState() == Qt::PartiallyChecked;
    }
  }};
}

PropertyControls AddHeading(const RowPlace& place, const PropertyField& field) {
  AddText(place, kLabelLeft, kHeadingWidth, QString("---- %1 ----").arg(Shown(field)))
      ->setAlignment(Qt::AlignCenter);
  return {};
}

PropertyControls AddControls(const RowPlace& place, const PropertyField& field) {
  switch (field.type) {
    case FieldType::Text:
      return AddTextRow(place, field);
    case FieldType::Integers:
      return AddNumbersRow<std::int32_t>(place, field);
    case FieldType::Floats:
      return AddNumbersRow<float>(place, field);
    case FieldType::Vehicle:
      return AddNameRow(place, field, VehicleNames());
    case FieldType::ControlPoint:
      return AddChoiceRow(place, field, ControlPointChoices(field.filterModes));
    case FieldType::ControlPointOrNone:
      return AddChoiceRow(place, field, ControlPointOrNoneChoices(field.filterModes));
    case FieldType::Team:
      return AddChoiceRow(place, field, TeamChoices());
    case FieldType::GameModes:
      return AddGameModesRow(place, field);
    case FieldType::CatalogueObject:
      return AddNameRow(place, field, ObjectOrNoneNames());
    case FieldType::Heading:
      return AddHeading(place, field);
  }
  return {};
}

}  // namespace

QRect RowPlace::At(int x, int width) const {
  const auto real = [this](int pixels) { return static_cast<int>(std::lround(pixels * scale)); };
  return {real(x), real(kFirstRowTop + kRowPitch * row), real(width), real(kRowPitch)};
}

PropertyRow AddPropertyRow(const RowPlace& place, const PropertyField& field) {
  if (field.type == FieldType::Heading) return {&field, AddHeading(place, field)};
  QLabel* const label = AddText(place, kLabelLeft, kLabelWidth, Shown(field));
  const qsizetype before = place.page->children().size();
  PropertyControls controls = AddControls(place, field);
  // The first control is the label's.
  if (place.page->children().size() > before) {
    label->setBuddy(static_cast<QWidget*>(place.page->children().at(before)));
  }
  if (!field.editable) controls = {};
  return {&field, std::move(controls)};
}

}  // namespace mw
