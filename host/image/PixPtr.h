#pragma once

#include <type_traits>

#include "host/image/ByteWord.h"
#include "host/image/Image.h"
#include "host/image/Vector4.h"

namespace ombrelune {

/// Cursor on the main buffer alone. No bounds check of any kind.
class SimplePixPtr {
public:
    explicit SimplePixPtr(Image* image) : image_(image), mainStep_(image->PixelBytes()) {}

    void GotoXY(int x, int y) { main_ = image_->MainRow(y) + static_cast<std::ptrdiff_t>(x) * mainStep_; }
    void NextPixel() { main_ += mainStep_; }
    void PrevPixel() { main_ -= mainStep_; }

protected:
    Image* image_;
    std::ptrdiff_t mainStep_;
    std::byte* main_ = nullptr;
};

/// Cursor on one picture through either record, at any depth. A record of the picture's own kind goes
/// straight to memory; everything else goes through the picture's hooks. Lives on the stack of one thread.
class PixPtr : public SimplePixPtr {
public:
    explicit PixPtr(Image* image)
        : SimplePixPtr(image), auxStep_(image->AuxFloats()), hooks_(&image->Hooks()), layout_(image->Layout())
    {}
    PixPtr(Image* image, int x, int y) : PixPtr(image) { GotoXY(x, y); }

    void GotoXY(int x, int y)
    {
        SimplePixPtr::GotoXY(x, y);
        if (auxStep_) aux_ = image_->AuxRow(y) + static_cast<std::ptrdiff_t>(x) * auxStep_;
    }
    void NextPixel()
    {
        SimplePixPtr::NextPixel();
        aux_ += auxStep_;
    }
    void PrevPixel()
    {
        SimplePixPtr::PrevPixel();
        aux_ -= auxStep_;
    }

    void GetPixel(Pixel& record) const
    {
        if (layout_ != PixelLayout::kPlainInt16) return hooks_->readInt(record, main_, aux_, *image_);
        Store(LoadUInt4(reinterpret_cast<std::uint16_t const*>(main_)), record.word);
        record.DropAux();
    }
    void GetPixel(FltPixel& record) const
    {
        if (layout_ != PixelLayout::kPlainFloat) return hooks_->readFloat(record, main_, aux_, *image_);
        std::memcpy(record.word, main_, sizeof record.word);
        record.DropAux();
    }
    void SetPixel(Pixel const& record)
    {
        if (layout_ != PixelLayout::kPlainInt16) return hooks_->writeInt(record, main_, aux_, *image_);
        Store(LoadUInt4(record.word), reinterpret_cast<std::uint16_t*>(main_));
    }
    void SetPixel(FltPixel const& record)
    {
        if (layout_ != PixelLayout::kPlainFloat) return hooks_->writeFloat(record, main_, aux_, *image_);
        std::memcpy(main_, record.word, sizeof record.word);
    }
    template <class Record> void GetPixel(int x, int y, Record& record)
    {
        GotoXY(x, y);
        GetPixel(record);
    }
    template <class Record> void SetPixel(int x, int y, Record const& record)
    {
        GotoXY(x, y);
        SetPixel(record);
    }

    template <class Word> friend void operator>>=(PixelRecord<Word>& record, PixPtr& cursor)
    {
        cursor.GetPixel(record);
        cursor.NextPixel();
    }
    template <class Word> friend void operator>>=(PixPtr& cursor, PixelRecord<Word> const& record)
    {
        cursor.SetPixel(record);
        cursor.NextPixel();
    }
    template <class Word> friend void operator<<=(PixelRecord<Word>& record, PixPtr& cursor)
    {
        cursor.GetPixel(record);
        cursor.PrevPixel();
    }
    template <class Word> friend void operator<<=(PixPtr& cursor, PixelRecord<Word> const& record)
    {
        cursor.SetPixel(record);
        cursor.PrevPixel();
    }

private:
    std::ptrdiff_t auxStep_;
    float* aux_ = nullptr;
    PixelHooks const* hooks_;
    PixelLayout layout_;
};

/// What a plain picture of a record's own words stores, and the layout that says so.
template <class Record>
using StoredWord = std::conditional_t<std::is_same_v<Record, Pixel>, std::uint16_t, float>;
template <class Record>
constexpr PixelLayout kPlainLayout =
    std::is_same_v<Record, Pixel> ? PixelLayout::kPlainInt16 : PixelLayout::kPlainFloat;

/// Cursor on a plain picture whose stored words are the record's own kind, known at compile time so that a
/// row loop becomes loads and stores: std::uint16_t with Pixel, float with FltPixel. Pictures of std::uint8_t
/// are worked as Pixel too.
template <class Stored> class PlainPixPtr {
public:
    PlainPixPtr(Image* image, int x, int y) : words_(reinterpret_cast<Stored*>(image->MainRow(y)) + 4 * x) {}

    template <class Word> void GetPixel(PixelRecord<Word>& record) const
    {
        if constexpr (std::is_same_v<Stored, float>) Store(LoadFloat4(words_), record.word);
        else if constexpr (std::is_same_v<Stored, std::uint8_t>)
            for (int i = 0; i < 4; ++i) record.word[i] = IntFromByte(words_[i]);
        else Store(LoadUInt4(words_), record.word);
        record.DropAux();
    }
    template <class Word> void SetPixel(PixelRecord<Word> const& record)
    {
        if constexpr (std::is_same_v<Stored, float>) Store(LoadFloat4(record.word), words_);
        else if constexpr (std::is_same_v<Stored, std::uint8_t>)
            for (int i = 0; i < 4; ++i) words_[i] = ByteFromInt(record.word[i]);
        else Store(LoadUInt4(record.word), words_);
    }
    void Skip() { words_ += 4; }
    template <class Word> friend void operator>>=(PixelRecord<Word>& record, PlainPixPtr& cursor)
    {
        cursor.GetPixel(record);
        cursor.words_ += 4;
    }
    template <class Word> friend void operator>>=(PlainPixPtr& cursor, PixelRecord<Word> const& record)
    {
        cursor.SetPixel(record);
        cursor.words_ += 4;
    }

private:
    Stored* words_;
};

} // namespace ombrelune
