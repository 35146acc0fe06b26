#pragma once

#include <cstdint>
#include <cstdio>
#include <fstream>

#include <zellap10/georef/geo_record.h>
#include <zellap10/platform/platform.h>

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning( \
    disable : 4251)  // members of other libraries' types: application and library share the runtime
#endif

/// One raster chart: its header, its colours, its pixels and its georeference.
///
/// The usual order of calls is: construct; OpenZellap; GetDocumentSize and GetPaletteHandle; any number of
/// getLine, getMultiLines and getAALine; CloseZellap; destroy.
///
/// An operation that can fail returns 1 for success and 0 for failure. A failure changes only what the
/// operation's comment names. Only OpenZellap throws, and only std::bad_alloc.
///
/// Threads: one thread at a time may use an object, because its line operations move one file position. While
/// one thread decodes, another may convert positions with the base record and read the palette, the size and
/// the texts. Separate objects share nothing.
///
/// Ownership: the object owns the palette object, the open file, the line table and the records of insets
/// until CloseZellap or the destructor. Close an object before you open it again: a second open replaces the
/// first three without releasing them, and adds to the lists of the base record. After a close, colours that
/// the next chart does not name keep the values of the previous chart.
class ZELLAP10_API CZellap {
public:
    CZellap();

    /// Releases what CloseZellap releases.
    virtual ~CZellap();

    CZellap(const CZellap&) = delete;
    CZellap& operator=(const CZellap&) = delete;

    /// Opens a chart file and reads its georeference file, if there is one: the chart's path up to its last
    /// dot, and ".GEO".
    ///
    /// @param path      the chart file, at most 2 GiB; on Windows in the code page of the system. It may be a
    ///                  text of this object.
    /// @param infoOnly  0 to read everything; otherwise only the text header and the entries of the
    ///                  georeference file. The line operations then return 0, there is no palette and nothing
    ///                  is fitted. The application may call solvepoly of the records, for transforms without
    ///                  pixels.
    /// @return          1, or 0. If it is 0, only Path changes; a chart that was open stays open.
    ///
    /// Reasons for 0: a null path; a TextStream that is already open; a path that cannot be opened, such as
    /// any folder, pipe or device. With infoOnly 0 also: a text without an end, bits per pixel outside 1 to
    /// 7, and a line table that is not completely inside the file or needs more memory than there is.
    ///
    /// If the lists of the base record still hold points of an earlier open, an open with infoOnly 0 fits
    /// these again, then adds those of the new georeference file and fits all.
    ///
    /// If other memory runs out, std::bad_alloc is thrown. Either only Path has changed, or the object is
    /// closed, and the fields that a close keeps may be those of the new file.
    int OpenZellap(const char* path, int infoOnly);

    /// Closes the file, releases the palette object and the line table, deletes the records of insets and
    /// empties the lists of the base record. Everything else, such as the size, keeps its value. Without an
    /// open chart it does nothing.
    void CloseZellap();

    /// Width and height of the chart in pixels, 0 by 0 on a new object. A close keeps them.
    CSize GetDocumentSize() const;

    /// The palette object, owned by the chart object, or null: the chart's colours by colour index, then the
    /// added ones.
    HPALETTE GetPaletteHandle() const;

    /// The record of the chart itself, which holds those of its insets. The address never changes. The record
    /// is fitted after an open with infoOnly 0 that found a georeference file; its InsetRect is then all
    /// zeros. After any other open, InsetRect is 0, 0 to Width, Height.
    CGEORec* GetBaseGeoRec();

    /// Decodes a scan line.
    ///
    /// @param line  0 to Height - 1
    /// @param dest  room for Width bytes, or null if Width is 0; receives one colour index per pixel
    /// @return      1, or 0 for a line out of range, an object that is not open, or a run that goes past
    ///              Width. In the last case, `dest` holds the runs before that one; the bytes after them are
    ///              untouched.
    int getLine(int line, unsigned char* dest);

    /// Decodes a rectangle of pixels, line after line without gaps.
    ///
    /// @param firstLine, lineCount  lines of the rectangle
    /// @param firstCol, colCount    columns of the rectangle
    /// @param dest                  room for lineCount x colCount bytes, or null if that is 0; receives one
    ///                              colour index per pixel
    /// @return  1, also for a rectangle without pixels; 0 for one that is not inside the chart and for an
    ///          object that is not open, with `dest` untouched. A run that goes past Width is cut. A negative
    ///          Width or Height counts as 0.
    int getMultiLines(int firstLine, int lineCount, int firstCol, int colCount, unsigned char* dest);

    /// Decodes one line reduced by integer factors: each pixel is the palette index nearest to the mean
    /// colour of a block.
    ///
    /// @param firstLine  first chart line of the blocks
    /// @param firstCol   first chart column of the first block
    /// @param colCount   chart columns to cover; those after the last complete block are not used
    /// @param dest       room for colCount / xFactor bytes, or null if that is 0
    /// @param xFactor    columns per block, 1 or more
    /// @param yFactor    lines per block, 1 or more
    /// @return           1, or 0 for a range that is not inside the chart, a factor below 1, an object that
    /// is
    ///                   not open, or memory that runs out, with `dest` untouched
    int getAALine(int firstLine, int firstCol, int colCount, unsigned char* dest, int xFactor, int yFactor);

protected:
    /// Reads the text part from TextStream, from the current position to its end. InsetRect of the base
    /// record becomes the chart's size. If that record has points and infoOnly is 0, it is fitted to them and
    /// its vertices get their pixels, rounded.
    void ReadHeader(int infoOnly);

    /// Moves ChartFile to the first run of a line, or of the nearest line if it is out of range. Without a
    /// line or an open file it does nothing.
    void seekLine(long line);

    /// Reads the run at the current position of ChartFile. Needs only ChartFile and the three masks; does
    /// nothing without a file.
    ///
    /// @param colour     receives its colour index
    /// @param runLength  receives its length in pixels, 1 or more, at most the largest int
    void vNextCRL(int* colour, int* runLength);

    /// Extends the chart's colours to LogPalette and creates PaletteHandle from it.
    void BuildPal();

    /// Fills ColourIndex from LogPalette.
    void BuildPalIndex();

public:
    CString Version;                       ///< "1.0"
    CGEORec BaseRec;                       ///< the georeference of the chart itself
    char ChartName[256] = {};              ///< the chart's name, zero-terminated
    int DU = 0;                            ///< the number of the "DU=" key
    int Width = 0;                         ///< pixels in a scan line
    int Height = 0;                        ///< scan lines
    int BitsPerPixel = 0;                  ///< bits of colour in a run, 1 to 7
    PALETTEENTRY HeaderColours[256] = {};  ///< the chart's colours by colour index; peFlags is 0
    HPALETTE PaletteHandle = nullptr;      ///< owned; null if there is none
    int HeaderColourCount = 0;             ///< one above the highest colour index in a header
    LOGPALETTE256 LogPalette;              ///< the palette as passed to CreatePalette
    CString Path;                          ///< as passed to OpenZellap
    std::ifstream TextStream;              ///< open only while OpenZellap runs
    std::FILE* ChartFile = nullptr;        ///< owned; null when not open
    int RunMask = 0;                       ///< run bits of a run's first byte
    int ColourMask = 0;                    ///< colour bits of a run's first byte
    int ColourShift = 0;                   ///< right shift for the colour bits
    int LineCount = 0;                     ///< lines in the line table
    std::int32_t* LineOffsets =
        nullptr;  ///< LineCount + 1 file offsets, owned; the last is that of the table
    unsigned char ColourIndex[32 * 32 * 32] = {};  ///< palette index by the upper 5 bits of red, green, blue
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif
