#pragma once

#include <QLabel>
#include <QStringList>

namespace kestrova
{

/// One line of text with "…" where it does not fit, at its end unless told otherwise; the whole of
/// it is the tool tip then. Never asks for more width than it is given.
class ElidedLabel : public QLabel
{
public:
    explicit ElidedLabel(QWidget* parent = nullptr);
    /// In the middle for a path, whose end says most.
    void SetElide(Qt::TextElideMode elide);
    /// A path in the text, of which the middle gives way first, so that what stands around it is
    /// read as long as there is room.
    void SetElidedPart(const QString& path);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QString Shown() const;

    Qt::TextElideMode elide_ = Qt::ElideRight;
    QString part_;
};

/// Wrapped text in the room that it is given, with "…" at its end where that is too little.
class ElidedParagraph : public QLabel
{
public:
    explicit ElidedParagraph(QWidget* parent = nullptr);
    /// The lines as they are painted.
    [[nodiscard]] QStringList ShownLines() const;
    [[nodiscard]] bool hasHeightForWidth() const override { return false; }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kestrova
