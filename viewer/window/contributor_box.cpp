#include "viewer/window/contributor_box.h"

#include <QVBoxLayout>

ContributorBox::ContributorBox(const SharedStyle& style, QWidget* parent)
    : QWidget(parent),
      title(this),
      place(this),
      text(style, &place),
      problem(&place),
      stack(new QStackedLayout(&place))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(&title);
    layout->addWidget(&place, 1);
    stack->addWidget(&text);
    stack->addWidget(&problem);
}

void ContributorBox::show_contributor(const Contributor& contributor, const RowSource* source)
{
    const QString path = QString::fromLocal8Bit(contributor.path.c_str());
    title.show_contributor(contributor.name, path, contributor.facts);
    text.set_source(source);
    text.setAccessibleName(contributor.name);
    if (contributor.problem) {
        problem.show_problem(*contributor.problem, path, contributor.encoding);
        stack->setCurrentWidget(&problem);
    } else {
        stack->setCurrentWidget(&text);
    }
}
