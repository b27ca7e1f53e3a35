#include "number_validator.h"

number_validator::number_validator(QObject *parent)
    : QValidator(parent)
{
    int_validator_.setBottom(0);
}

number_validator::~number_validator() = default;

QValidator::State number_validator::validate(QString &input, int &pos) const
{
    if (input.contains(QLatin1Char(',')) || input.contains(QLatin1Char('.')))
        return QValidator::Invalid;
    return int_validator_.validate(input, pos);
}

void number_validator::fixup(QString &input) const
{
    input.remove(QLatin1Char('.'));
    input.remove(QLatin1Char(','));
    int_validator_.fixup(input);
}
