// One page of settings, made from its description: its header, sections as groups under headings, captions
// aligned, a mark before each row that differs from what is stored, a note under a field whose text is
// invalid, and a preview where the description has one.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/field_note.h"
#include "src/server/mac/ui/interface_description.h"

class QGridLayout;
class QHBoxLayout;
class QLabel;

namespace norvik::desktop {

class ChangeMark;
class NoteLabel;
class PreviewView;
class RowBack;
class StateDot;

class Page : public QWidget {
 public:
  // What is wrong with the text of a field; no words if it is valid.
  using Problem = std::function<FieldNote(const ControlDescription& description)>;

  Page(NVKServerPrefs& pane, const InterfaceDescription& interface, const TabDescription& tab,
       Problem problem);
  ~Page() override;

  const std::vector<std::unique_ptr<Binding>>& bindings() const { return bindings_; }

  // The ways back of the rows with a setting, in their order.
  const std::vector<RowBack*>& rowBacks() const { return backs_; }
  // Opens the menu of the row that has the keyboard focus; false where none has.
  bool showFocusedMenu();

  // Called when a control showed a change of the model.
  std::function<void(const Binding&)> changed;

  // Adds a group with a heading, and a note that may be empty, after the sections of the description. Takes
  // the content in.
  void addGroup(const QString& title, const QString& note, QWidget* content);

  // As wide as the page may be in a larger window: lines stay short enough to read, and sliders to aim at.
  int mostWidth() const;

  // Update the marks, and the notes under the fields, from the model; repaint only what changed. The notes
  // ask the computer which ports are in use.
  void refreshMarks();
  void refreshNotes();
  // Whether the note under the field says that Apply would refuse it.
  bool isRefused(const Control& field) const;

 protected:
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  struct Row {
    ChangeMark* mark = nullptr;
    RowBack* back = nullptr;  // null for a row without a setting
    std::vector<Binding*> bindings;
    std::vector<StateDot*> dots;
    std::vector<QLabel*> captions;  // those that lead to a control; greyed with it
    QWidget* ends = nullptr;        // of a slider; greyed with it
    std::vector<QWidget*> widgets;  // everything in the row
  };
  struct Note {
    const Binding* binding;
    NoteLabel* label;
  };

  void addSection(const SectionDescription& section);
  int beginGroup(const QString& title, const QString& note);
  void endGroup(int begin);
  void groupRadioButtons();
  void addSpace(double lines);
  void addAcross(QWidget* widget);
  void addWhole(QWidget* widget);
  void addRow(const RowDescription& description);
  void addBesideCaption(Row& row, const RowDescription& description, QWidget* fields);
  QWidget* makeFields(Row& row, const RowDescription& description);
  void addField(Row& row, QHBoxLayout& line, Binding& binding);
  void addNote(Row& row, const Binding& binding);
  void addBack(Row& row, const RowDescription& description);
  void addEnds(Row& row, const ControlDescription& slider);
  void addPreview();
  void showPreview();
  QLabel* caption(const RowDescription& row);
  void follow(Row& row);
  void showRow(const Row& row);
  void describe(const Binding& binding, bool differs);
  const Note* noteOf(const Binding& binding) const;

  NVKServerPrefs& pane_;
  const InterfaceDescription& interface_;
  Problem problem_;
  const TabDescription& tab_;
  QGridLayout* grid_;
  PreviewView* preview_ = nullptr;
  bool addSpaceBeforeRow_ = false;  // it is not the first of its section
  std::vector<std::unique_ptr<Binding>> bindings_;
  std::vector<std::unique_ptr<Row>> rows_;
  std::vector<Note> notes_;
  std::vector<RowBack*> backs_;
};

}  // namespace norvik::desktop
