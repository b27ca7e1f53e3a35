#pragma once

#include <QIntValidator>
#include <QValidator>

// Whole minutes from 0 up, typed without group marks: a "," or "." is refused
// at once, whatever the locale makes of it, and the rest is left to an
// integer validator. 0 stands for "no limit" to the code that reads it.
class number_validator : public QValidator
{
    Q_OBJECT
    Q_DISABLE_COPY(number_validator)

public:
    explicit number_validator(QObject *parent = nullptr);
    ~number_validator() override;

    QValidator::State validate(QString &input, int &pos) const override;
    void fixup(QString &input) const override;

private:
    QIntValidator int_validator_;
};
