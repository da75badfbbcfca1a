#pragma once

#include <QAccessibleWidget>

class QLabel;

namespace benthor::look {

class ClickableLabel;

/// A widget of ours as a screen reader meets it: without what is hidden in it, with the role, the reading and
/// the acts that it was told. All of it is looked up when it is asked for, since a widget may be met before
/// it is ready.
class HouseAccess : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    HouseAccess(QWidget* widget, QAccessible::Role role);

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text text) const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString& action) override;

    QVariant currentValue() const override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;
    void setCurrentValue(const QVariant& value) override;

protected:
    /// Whether there is nothing to tell of it.
    virtual bool isDecoration() const;
    virtual bool isBlank() const;

private:
    QList<QWidget*> parts() const;
};

/// A label: its words behind its name and before its unit; a picture is told by its name, or not at all.
class LabelAccess : public HouseAccess {
public:
    explicit LabelAccess(QLabel* label);

    QAccessible::Role role() const override;
    QString text(QAccessible::Text text) const override;
    QList<std::pair<QAccessibleInterface*, QAccessible::Relation>>
    relations(QAccessible::Relation match = QAccessible::AllRelations) const override;

protected:
    bool isDecoration() const override;
    bool isBlank() const override;
    QLabel* label() const;
};

/// A label that acts: a button. One that the keyboard does not reach is the twin of something that it does.
class ActingAccess : public LabelAccess {
public:
    explicit ActingAccess(ClickableLabel* label);

    QAccessible::Role role() const override;
    QString text(QAccessible::Text text) const override;
    QStringList actionNames() const override;
    void doAction(const QString& action) override;

protected:
    bool isDecoration() const override;
};

/// A button that paints itself. What lies in it is part of it.
class ButtonAccess : public HouseAccess {
public:
    explicit ButtonAccess(QWidget* button);

    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text text) const override;
    QStringList actionNames() const override;
    void doAction(const QString& action) override;

protected:
    bool isBlank() const override;
};

/// Where a window says what happened: seen by nobody, and there for readers once something was said.
class NoteAccess : public HouseAccess {
public:
    explicit NoteAccess(QWidget* note);

    QAccessible::State state() const override;
    QString text(QAccessible::Text text) const override;
    QRect rect() const override;

protected:
    bool isBlank() const override;
};

/// A text without its mark for the keyboard: "&File" is "File".
QString withoutMark(const QString& text);

} // namespace benthor::look
