#pragma once

#include <QObject>
#include <QProperty>

/// What the meta-object asks for. It is a template so that only the meta-object's own file compiles it: in each file
/// that merely reads fields it was four of five parts of the work.
#define CORVANE_BINDABLE(Type, name)                                                                                   \
    template <typename Value = Type>                                                                                   \
    [[nodiscard]] QBindable<Value> name##Bindable()                                                                    \
    {                                                                                                                  \
        return &m_##name;                                                                                              \
    }

/// A published field: a bindable property that anyone reads, that flows set through `setter`, and that notifies
/// its observers of every change, and of nothing else. Views cannot write it.
#define CORVANE_PUBLISHED(Owner, Type, name, setter, initial)                                                          \
    Q_PROPERTY(Type name READ name NOTIFY name##Changed BINDABLE name##Bindable)                                       \
    CORVANE_FIELD(Owner, Type, name, setter, initial)

/// The same, for what the user enters in a view: that view writes it.
#define CORVANE_ENTERED(Owner, Type, name, setter, initial)                                                            \
    Q_PROPERTY(Type name READ name WRITE setter NOTIFY name##Changed BINDABLE name##Bindable)                          \
    CORVANE_FIELD(Owner, Type, name, setter, initial)

/// What both are made of.
#define CORVANE_FIELD(Owner, Type, name, setter, initial)                                                              \
public:                                                                                                                \
    [[nodiscard]] Type name() const { return m_##name.value(); }                                                       \
    void setter(const Type &value) { m_##name = value; }                                                               \
    CORVANE_BINDABLE(Type, name)                                                                                       \
    Q_SIGNAL void name##Changed();                                                                                     \
                                                                                                                       \
private:                                                                                                               \
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Owner, Type, m_##name, initial, &Owner::name##Changed)                        \
                                                                                                                       \
public:

/// A derived field: follows other fields through a binding that its owner sets once.
#define CORVANE_DERIVED(Owner, Type, name)                                                                             \
    Q_PROPERTY(Type name READ name NOTIFY name##Changed BINDABLE name##Bindable)                                       \
public:                                                                                                                \
    [[nodiscard]] Type name() const { return m_##name.value(); }                                                       \
    CORVANE_BINDABLE(Type, name)                                                                                       \
    Q_SIGNAL void name##Changed();                                                                                     \
                                                                                                                       \
private:                                                                                                               \
    Q_OBJECT_BINDABLE_PROPERTY(Owner, Type, m_##name, &Owner::name##Changed)                                           \
                                                                                                                       \
public:

/// A published field that is also written to `m_settings`, under its own name, whenever it is set.
#define CORVANE_PERSISTED(Owner, Type, name, setter)                                                                   \
    Q_PROPERTY(Type name READ name NOTIFY name##Changed BINDABLE name##Bindable)                                       \
public:                                                                                                                \
    [[nodiscard]] Type name() const { return m_##name.value(); }                                                       \
    void setter(const Type &value)                                                                                     \
    {                                                                                                                  \
        m_settings.setValue(QStringLiteral(#name), value);                                                             \
        m_##name = value;                                                                                              \
    }                                                                                                                  \
    CORVANE_BINDABLE(Type, name)                                                                                       \
    Q_SIGNAL void name##Changed();                                                                                     \
                                                                                                                       \
private:                                                                                                               \
    Q_OBJECT_BINDABLE_PROPERTY(Owner, Type, m_##name, &Owner::name##Changed)                                           \
                                                                                                                       \
public:
