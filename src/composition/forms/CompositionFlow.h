#pragma once
// The composition forms hand over to one another: a form names the form that comes
// next and closes, and the next one is made afresh. A panel builds its rows only when
// its flag in the application state is set, and a form sets that flag when it hands
// over to the panel, so that a panel is always rebuilt from the working tables after
// an add or a release and never patched in place.

class QWidget;

namespace normaris::CompositionFlow {

enum class Form { None, ArticlePanel, ParagraphPanel, Add, Release };

// Called by a form just before it closes: sets the flag of a panel that is to be
// shown (ArticlePanelActive, ParagraphPanelActive) and names the next form.
void handOver(Form next);
// The form named by the last hand-over, None when the flow ends.
Form pending();
// Shows the pending form, then each one it hands over to, until one closes without
// a hand-over.
void run(QWidget *parent);

} // namespace normaris::CompositionFlow
