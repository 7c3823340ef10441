#include "forms/datacontrol.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTextEdit>

#include "db/error.h"
#include "forms/events.h"
#include "vb/conv.h"
#include "vb/err.h"
#include "vb/format.h"
#include "vb/error.h"

namespace forms {

namespace {

std::string widgetValue(QWidget* w) {
    if (auto* c = qobject_cast<QCheckBox*>(w)) return c->isChecked() ? "1" : "0";
    if (auto* d = qobject_cast<QDateEdit*>(w)) {
        if (d->property(DateIsNull).toBool()) return {};
        return str(d->date().toString("yyyy.MM.dd."));
    }
    return text(w);
}

void showValue(QWidget* w, const vb::Variant& v) {
    QSignalBlocker block(qobject_cast<QCheckBox*>(w) ? w : nullptr);
    if (auto* c = qobject_cast<QCheckBox*>(w)) {
        bool on = false;
        if (!vb::isNull(v) && !vb::isEmpty(v)) on = vb::resume([&] { return vb::CDbl(v) != 0; }, false);
        c->setChecked(on);
    } else if (auto* d = qobject_cast<QDateEdit*>(w)) {
        if (auto* date = std::get_if<vb::Date>(&v)) {
            auto p = vb::dateParts(*date);
            d->setDate(QDate(p.year, p.month, p.day));
            d->setProperty(DateIsNull, false);
        } else {
            d->setProperty(DateIsNull, true);
        }
    } else {
        QVariant mask = w->property(DataFormat);
        if (mask.isValid() && !vb::isNull(v) && !vb::isEmpty(v)) {
            std::string s;
            if (vb::resume([&] { s = vb::Format(v, str(mask.toString())); })) {
                setText(w, s);
                return;
            }
        }
        setText(w, displayText(v));
    }
}

}  // namespace

std::string displayText(const vb::Variant& v) {
    if (vb::isNull(v) || vb::isEmpty(v)) return {};
    if (auto* d = std::get_if<vb::Date>(&v)) return vb::dateTimeText(*d);
    if (std::holds_alternative<vb::ByteArray>(v)) return {};
    std::string s;
    if (vb::resume([&] { s = vb::CStr(v); })) return s;
    return {};
}

void setPickerDate(QWidget* picker, const vb::Date& date) {
    auto* d = qobject_cast<QDateEdit*>(picker);
    if (!d) return;
    auto p = vb::dateParts(date);
    d->setProperty(DateIsNull, false);
    d->setDate(QDate(p.year, p.month, p.day));
}

DataControl::DataControl(std::string name, std::string databaseName, std::string recordSource, QObject* parent)
    : QObject(parent), name_(std::move(name)), databaseName_(std::move(databaseName)),
      recordSource_(std::move(recordSource)) {
    setObjectName(qs(name_));
}

DataControl::~DataControl() { detach(); }

db::Recordset& DataControl::rs() const {
    if (!rs_ || rs_->closed()) throw vb::VbError(91, "Object variable or With block variable not set");
    return *rs_;
}

std::shared_ptr<db::Database> DataControl::Database() const { return db::Database::open(databaseName_); }

void DataControl::Refresh() {
    if (rs_ && !rs_->closed()) {
        try {
            writeBound();
        } catch (const vb::NumberedError&) {
            // a failed write-back on Refresh is dropped
        }
    }
    auto fresh = Database()->OpenRecordset(recordSource_, db::dbOpenDynaset);
    if (rs_) {
        rs_->removeMoveListener(this);
        if (!rs_->closed()) vb::resume([&] { rs_->Close(); });
    }
    setRecordset(std::move(fresh));
}

void DataControl::setRecordset(std::unique_ptr<db::Recordset> rs) {
    if (rs_ && rs_ != rs) rs_->removeMoveListener(this);
    rs_ = std::move(rs);
    if (rs_) {
        rs_->removeMoveListener(this);
        rs_->addMoveListener(this);
        load();
    }
    emit recordsetChanged();
}

void DataControl::detach() {
    if (rs_) rs_->removeMoveListener(this);
    rs_.reset();
}

void DataControl::bind(QWidget* w, const std::string& column) {
    bindings_.push_back({w, column, {}});
    if (auto* e = qobject_cast<QLineEdit*>(w)) {
        // Access shows a bound text column's width as the box's limit.
        (void)e;
    }
    if (auto* d = qobject_cast<QDateEdit*>(w))  // a date chosen by the user is a value
        connect(d, &QDateEdit::dateChanged, this, [d] { d->setProperty(DateIsNull, false); });
    connect(w, &QObject::destroyed, this, [this, w] {
        std::erase_if(bindings_, [w](const Binding& b) { return b.widget == w; });
    });
}

void DataControl::writeBound() {
    db::Recordset* r = rs_.get();
    if (!r || r->closed() || writing_ || r->editing() || !r->updatable() || r->AbsolutePosition() < 0) return;
    std::vector<const Binding*> changed;
    for (auto& b : bindings_) {
        if (b.column.empty()) continue;
        if (qobject_cast<QLabel*>(b.widget) && !b.widget->property(LabelWritesBack).toBool()) continue;
        if (widgetValue(b.widget) != b.loaded) changed.push_back(&b);
    }
    if (changed.empty()) return;
    writing_ = true;
    try {
        r->Edit();
        for (auto* b : changed) {
            std::string v = widgetValue(b->widget);
            r->Fields(b->column).setValue(v.empty() ? vb::Variant(vb::Null{}) : vb::Variant(v));
        }
        r->Update();
    } catch (...) {
        writing_ = false;
        if (r->editing()) vb::resume([&] { r->CancelUpdate(); });
        throw;
    }
    writing_ = false;
    for (auto* b : changed) const_cast<Binding*>(b)->loaded = widgetValue(b->widget);
}

void DataControl::markLoaded(QWidget* w) {
    for (auto& b : bindings_)
        if (b.widget == w) b.loaded = widgetValue(w);
}

void DataControl::beforeMove(db::Recordset&) { writeBound(); }

void DataControl::afterMove(db::Recordset&) { load(); }

void DataControl::load() {
    db::Recordset* r = rs_.get();
    bool onRecord = r && !r->closed() && r->AbsolutePosition() >= 0;
    for (auto& b : bindings_) {
        if (b.column.empty()) continue;
        vb::Variant v = vb::Null{};
        if (onRecord) {
            try {
                v = r->Fields(b.column).Value();
            } catch (const vb::NumberedError&) {
                v = vb::Null{};  // a missing column or a deleted row shows empty
            }
        }
        showValue(b.widget, v);
        b.loaded = widgetValue(b.widget);
    }
    emit moved();
}

}  // namespace forms
