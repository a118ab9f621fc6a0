#pragma once

#include <QJSValue>
#include <QList>
#include <QString>

#include <utility>

namespace tools {

/// A name that the script knows at some place, with its value.
struct script_variable
{
    QString name;
    QJSValue value;
};

/// One function of the call stack, and where it stands.
struct script_frame
{
    QString function;
    int line = 0;
    QList<script_variable> variables;
};

/// One call of the script's exportStep.
struct script_step
{
    QString action;
    /// What the step is about, for reading: a label and a text.
    QList<std::pair<QString, QString>> details;
    QString defaultText;
    QList<script_variable> arguments;
};

/// What an expression came to.
struct script_evaluation
{
    bool ok = false;
    QString text;
};

} // namespace tools
