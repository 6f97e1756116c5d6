#include "core/record_reader.h"

#include "automation/error.h"
#include "core/host.h"

namespace qmevents {
namespace {

MemberId required(const Ref<Object>& object, std::string_view name)
{
    const MemberId id = object->memberId(name);
    if (id == unknownMember) {
        throw Error::with(ErrorNumber::noSuchMember,
                          std::string(object->className()) + "." + std::string(name));
    }
    return id;
}

} // namespace

RecordReader::Column::Column(Ref<Object> field)
    : field_(std::move(field)), value_(required(field_, "Value"))
{
}

RecordReader::RecordReader(const std::string& sql)
    : recordSet_(host().document().dataSet(sql)), closes_(true)
{
    bind();
}

RecordReader::RecordReader(Ref<Object> recordSet) : recordSet_(std::move(recordSet)), closes_(false)
{
    bind();
}

void RecordReader::bind()
{
    if (!recordSet_) return;
    atEnd_ = required(recordSet_, "EOF");
    moveNext_ = required(recordSet_, "MoveNext");
}

RecordReader::~RecordReader()
{
    if (!recordSet_ || !closes_) return;
    try {
        call(recordSet_, "Close");
    } catch (const Error&) {
        // Every row that was wanted has been read; the host frees the set with its last reference.
    }
}

bool RecordReader::atEnd() const
{
    return !recordSet_ || toBool(recordSet_->invoke(atEnd_, CallKind::get, {}));
}

void RecordReader::next() { recordSet_->invoke(moveNext_, CallKind::method, {}); }

RecordReader::Column RecordReader::column(std::string_view name) const
{
    const auto fields = getObject(recordSet_, "Fields");
    return Column(toObject(call(fields, "Item", name)));
}

RecordReader::Column RecordReader::firstColumn() const
{
    return Column(toObject(call(getObject(recordSet_, "Fields"), "Item", 0)));
}

bool RecordReader::hasColumn(std::string_view name) const
{
    try {
        column(name);
        return true;
    } catch (const Error&) {
        // A record set tells of an unknown column only by failing.
        return false;
    }
}

Value firstValue(const std::string& sql, std::string_view column)
{
    const RecordReader rows(sql);
    return rows.atEnd() ? Value() : rows.column(column).value();
}

} // namespace qmevents
