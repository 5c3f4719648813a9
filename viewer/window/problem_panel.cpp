#include "viewer/window/problem_panel.h"

#include "cmdline/encodings.h"

#include <QCoreApplication>
#include <QLocale>
#include <QStyle>

namespace
{

QString translated(const char* text)
{
    return QCoreApplication::translate("ProblemPanel", text);
}

/** The faults' names, for translation; TextProblem::what() has the same in English. */
QString name_of(const TextProblem& problem)
{
    switch (problem.fault) {
    case TextFault::unreadable:
        return QString::fromLocal8Bit(problem.what().c_str());
    case TextFault::is_directory:
        return translated(QT_TRANSLATE_NOOP("ProblemPanel", "It is a directory, not a file."));
    case TextFault::not_a_file:
        return translated(
            QT_TRANSLATE_NOOP("ProblemPanel", "It is neither a file nor a directory."));
    case TextFault::not_a_character:
        return translated(QT_TRANSLATE_NOOP("ProblemPanel", "The bytes are no character."));
    case TextFault::truncated:
        return translated(QT_TRANSLATE_NOOP("ProblemPanel", "A character is cut short."));
    case TextFault::overlong:
        return translated(
            QT_TRANSLATE_NOOP("ProblemPanel", "A character has a longer form than it should."));
    case TextFault::surrogate:
        return translated(
            QT_TRANSLATE_NOOP("ProblemPanel", "A surrogate stands there, which is no character."));
    case TextFault::unpaired_surrogate:
        return translated(QT_TRANSLATE_NOOP("ProblemPanel", "A surrogate lacks its other half."));
    case TextFault::too_large:
        break;
    }
    return translated(QT_TRANSLATE_NOOP(
        "ProblemPanel", "A value is above 10FFFF, the highest that a character can have."));
}

} // namespace

QString describe(const TextProblem& problem, int encoding)
{
    if (!problem.is_malformed())
        return name_of(problem);
    const QLocale locale;
    const QString place = translated(QT_TRANSLATE_NOOP("ProblemPanel", "Byte offset %1, line %2."))
                              .arg(QString::number(problem.offset), locale.toString(problem.line));
    const QString sentence =
        translated(QT_TRANSLATE_NOOP("ProblemPanel", "This file is not valid %1."))
            .arg(QString::fromLatin1(encoding_types[encoding]).toUpper());
    return sentence + '\n' + place + '\n' + name_of(problem);
}

ProblemPanel::ProblemPanel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText); // a path may hold what looks like markup
    setWordWrap(true);
    setAlignment(Qt::AlignCenter);
    setMargin(24);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setBackgroundRole(QPalette::Base);
    setForegroundRole(QPalette::Text);
    setAutoFillBackground(true);
}

void ProblemPanel::show_problem(const TextProblem& problem, const QString& path, int encoding)
{
    setText(translated(QT_TRANSLATE_NOOP("ProblemPanel", "This contributor cannot be shown.")) +
            QStringLiteral("\n\n") + path + QStringLiteral("\n\n") + describe(problem, encoding));
    setAccessibleName(text());
}
