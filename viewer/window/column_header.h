/*
 * What stands above a column: the contributor's display name, and beneath it its path, encoding,
 * byte-order mark and ends of lines. Texts that do not fit lose their middle; the tool tip has them
 * whole.
 */
#pragma once

#include "viewer/core/text.h"

#include <QString>
#include <QWidget>

/** The encoding, mark and ends of lines of a text, in words. */
QString describe(const Text& text);

class ColumnHeader : public QWidget
{
  public:
    explicit ColumnHeader(QWidget* parent = nullptr);

    void show_contributor(const QString& name, const QString& path, const QString& facts);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString name{};
    QString path{};
    QString facts{};
};
