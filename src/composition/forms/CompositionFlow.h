#pragma once
// The composition forms hand over to one another: a form says which comes next and
// closes, and the next one is made afresh, so that a panel is always rebuilt from
// the working tables after an add or a release.

class QWidget;

namespace normaris::CompositionFlow {

enum class Form { None, ArticlePanel, ParagraphPanel, Add, Release };

// Called by a form just before it closes.
void setNext(Form form);
// Shows the forms one after another from `first` until one closes with nothing next.
void run(QWidget *parent, Form first);

} // namespace normaris::CompositionFlow
