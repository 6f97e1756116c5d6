#include <limits>
#include <memory>
#include <new>

#include "automation/error.h"
#include "com/typed_memory.h"

namespace qmevents::com {
namespace {

// The elements of a safe array, which lie still while this lives.
class Elements {
public:
    explicit Elements(SAFEARRAY* array) : array_(array)
    {
        void* data = nullptr;
        checkConversion(SafeArrayAccessData(array, &data));
        data_ = static_cast<std::byte*>(data);
    }
    Elements(const Elements&) = delete;
    Elements& operator=(const Elements&) = delete;
    ~Elements() { SafeArrayUnaccessData(array_); }
    std::byte* data() const { return data_; }

private:
    SAFEARRAY* array_;
    std::byte* data_ = nullptr;
};

// Walks an array in our order, in which the first index varies slowest, and tells the place of each
// element in a safe array, where it varies fastest.
class Walk {
public:
    explicit Walk(const std::vector<Array::Dimension>& dimensions)
        : dimensions_(dimensions), indices_(dimensions.size()), strides_(dimensions.size())
    {
        constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
        for (std::size_t i = 0; i < dimensions.size(); ++i) {
            strides_[i] = size_;
            const auto count = static_cast<std::size_t>(dimensions[i].count);
            if (count != 0 && size_ > most / count) throw std::bad_alloc();
            size_ *= count;
        }
    }
    std::size_t size() const { return dimensions_.empty() ? 0 : size_; }
    /// The place of the element that the walk stands on; goes on to the next.
    std::size_t next()
    {
        const std::size_t place = place_;
        for (std::size_t i = dimensions_.size(); i-- > 0;) {
            place_ += strides_[i];
            if (++indices_[i] < static_cast<std::size_t>(dimensions_[i].count)) break;
            place_ -= strides_[i] * indices_[i];
            indices_[i] = 0;
        }
        return place;
    }

private:
    const std::vector<Array::Dimension>& dimensions_;
    std::vector<std::size_t> indices_, strides_;
    std::size_t size_ = 1;
    std::size_t place_ = 0;
};

struct Destroy {
    void operator()(SAFEARRAY* array) const { SafeArrayDestroy(array); }
};

} // namespace

std::size_t sizeOf(VARTYPE type)
{
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
        return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return sizeof(void*);
    case VT_DECIMAL:
        return sizeof(DECIMAL);
    case VT_VARIANT:
        return sizeof(VARIANT);
    default:
        return 0;
    }
}

Value fromSafeArray(SAFEARRAY* array, VARTYPE type, int depth)
{
    auto result = std::make_shared<Array>();
    if (!array) return result; // a dynamic array that was never given a size
    const std::size_t size = sizeOf(type);
    if (size == 0 || SafeArrayGetElemsize(array) != size) {
        throwNotCarried("arrays of variant type " + std::to_string(type) + " cannot be carried");
    }
    // The descriptor lists the dimensions from the last to the first.
    for (std::size_t i = SafeArrayGetDim(array); i-- > 0;) {
        const SAFEARRAYBOUND& bound = array->rgsabound[i];
        if (!std::in_range<std::int32_t>(bound.cElements)) throw std::bad_alloc();
        result->dimensions.push_back({bound.lLbound, static_cast<std::int32_t>(bound.cElements)});
    }
    Walk walk(result->dimensions);
    const Elements elements(array);
    for (std::size_t left = walk.size(); left > 0; --left) {
        result->items.push_back(readAt(type, elements.data() + walk.next() * size, {}, depth + 1));
    }
    return result;
}

SAFEARRAY* toSafeArray(const Array& array, VARTYPE type)
{
    Walk walk(array.dimensions);
    if (walk.size() != array.items.size()) {
        throw Error::with(ErrorNumber::internal, "an array's items do not fill its dimensions");
    }
    const std::size_t size = sizeOf(type);
    if (size == 0) throwNotCarried("the variable holds an array of another type");
    std::vector<SAFEARRAYBOUND> bounds;
    for (const auto& dimension : array.dimensions) {
        bounds.push_back({static_cast<ULONG>(dimension.count), dimension.lower});
    }
    if (bounds.empty()) bounds.push_back({0, 0});
    std::unique_ptr<SAFEARRAY, Destroy> result(
        SafeArrayCreate(type, static_cast<UINT>(bounds.size()), bounds.data()));
    if (!result) throw std::bad_alloc();
    {
        const Elements elements(result.get());
        for (const Value& item : array.items) {
            writeAt(type, elements.data() + walk.next() * size, item);
        }
    }
    return result.release();
}

} // namespace qmevents::com
