// SPDX-License-Identifier: MIT
#include "foundation/frequencyedit.h"
#include "foundation/tavidatetime.h"
#include "gallery/page.h"

#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

/// A time that pictures can show on any day, in any time zone; a Monday.
TaviDateTime timeOfPicture()
{
    return {QDate(2027, 3, 1), QTime(12, 0)};
}

/// The group box, and what becomes of a profile with its setting.
class FrequencyEditPage : public QWidget
{
public:
    explicit FrequencyEditPage(bool for_picture)
        : made_(
            static_cast<long>((for_picture ? timeOfPicture() : TaviDateTime::currentDateTime()).toSecsSinceEpoch()))
    {
        edit_ = new FrequencyEdit(this, "profile_expiry");
        edit_->setTitle(QStringLiteral("Monitor profile expires"));
        expiry_ = new QLabel(this);
        due_ = new QLabel(this);
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(edit_);
        auto *form = new QFormLayout;
        form->addRow(QStringLiteral("Profile made:"), new QLabel(TaviDateTime::localeDateString(made_), this));
        form->addRow(QStringLiteral("Expires:"), expiry_);
        form->addRow(QStringLiteral("Due today:"), due_);
        layout->addLayout(form);
        layout->addStretch();
        connect(edit_->onoff_combo, QOverload<int>::of(&QComboBox::activated), this, &FrequencyEditPage::tell);
        connect(edit_->day_combo, QOverload<int>::of(&QComboBox::activated), this, &FrequencyEditPage::tell);
        connect(edit_->frequency_spin, QOverload<int>::of(&QSpinBox::valueChanged), this, &FrequencyEditPage::tell);
        edit_->setFrequency(4);
        edit_->setFrequencyNumber(2);
        tell();
        // Whether it is due depends on the day on which the picture is taken.
        if (for_picture)
            due_->setText(QStringLiteral("no"));
    }

private:
    void tell()
    {
        const unsigned long frequency = edit_->getFrequency();
        const unsigned long number = edit_->getFrequencyNumber();
        const long expiry = FrequencyEdit::expiryTime(made_, frequency, number);
        expiry_->setText(frequency == 0 ? QStringLiteral("never") : TaviDateTime::localeDateString(expiry));
        due_->setText(FrequencyEdit::nowIsTheTime(made_, frequency, number) ? QStringLiteral("yes")
                                                                            : QStringLiteral("no"));
    }

    long made_;
    FrequencyEdit *edit_ = nullptr;
    QLabel *expiry_ = nullptr;
    QLabel *due_ = nullptr;
};

} // namespace

QWidget *makeFrequencyEditPage(bool for_picture)
{
    return new FrequencyEditPage(for_picture);
}
