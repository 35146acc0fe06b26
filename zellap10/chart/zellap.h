#pragma once

#include <cstdint>
#include <cstdio>
#include <fstream>

#include <zellap10/georef/geo_record.h>
#include <zellap10/platform/platform.h>

/// One raster chart: its header, its colours, its pixels and its georeference.
///
/// The usual order of calls is: construct; OpenZellap; GetDocumentSize and GetPaletteHandle; any number of
/// getLine, getMultiLines and getAALine; CloseZellap; destroy.
///
/// An operation that can refuse gives 1 for success and 0 for refusal; a refusal changes nothing but what its
/// operation says. None throws but OpenZellap, and that only std::bad_alloc.
///
/// Threads: an object is for one thread at a time, since its line operations move one file position; but
/// while one thread decodes, another may convert positions with the base record and read the palette, the
/// size and the texts. Separate objects share nothing.
///
/// Ownership: the object owns the palette object, the open file, the line table and the records of insets
/// until CloseZellap or the destructor. An open on an object that is already open replaces the first three
/// without releasing them, and adds to the lists of the base record: close first. After a close the object
/// may be opened again; colours that the new chart does not name stay as the earlier chart left them.
class ZELLAP10_API CZellap {
public:
    CZellap();

    /// Releases what CloseZellap releases.
    virtual ~CZellap();

    CZellap(const CZellap&) = delete;
    CZellap& operator=(const CZellap&) = delete;

    /// Opens a chart file, and reads the georeference file that stands beside it: the chart's path up to its
    /// last dot, and ".GEO". Without that file the chart opens all the same.
    ///
    /// @param path      the chart file, at most 2 GiB; on Windows in the code page of the system. Any text of
    ///                  this object will do.
    /// @param infoOnly  0 to read everything; else only the text header and the entries of the georeference
    ///                  file are read: the line operations refuse, there is no palette and nothing is fitted.
    ///                  The application may then call solvepoly of the records, for transforms without
    ///                  pixels.
    /// @return          1, or 0 for a null path, a TextStream that is open already, a file that cannot be
    ///                  opened, which a folder, a pipe and a device never can, and, with infoOnly 0, one
    ///                  whose binary part is unsound: no end of the text, bits per pixel outside 1 to 7, a
    ///                  line table that is not wholly inside the file, or that takes more memory than there
    ///                  is. What was open before then stays open, and every field but Path as it was.
    ///
    /// Where the lists of the base record still hold the points of an earlier open, an open with infoOnly 0
    /// fits these again before it adds those of the new georeference file and fits all.
    ///
    /// Memory that runs out elsewhere is thrown as std::bad_alloc. Either all is then as after a refusal, or
    /// the object is closed, with what was open before; the fields that a close keeps may then be the new
    /// file's.
    int OpenZellap(const char* path, int infoOnly);

    /// Closes the file, releases the palette object and the line table, deletes the records of insets and
    /// empties the lists of the base record. Everything else, such as the size, keeps its value. Does nothing
    /// where nothing is open.
    void CloseZellap();

    /// Width and height of the chart in pixels, 0 by 0 on a new object; still good after a close.
    CSize GetDocumentSize() const;

    /// The palette object: the chart's colours under their colour indexes and behind them the added ones;
    /// null where there is none. The object keeps ownership.
    HPALETTE GetPaletteHandle() const;

    /// The record of the whole chart, which holds those of its insets; the same address for the whole life of
    /// the object. It is fitted after an open with infoOnly 0 that found a georeference file. Its InsetRect
    /// is then all zeros; after any other open it is the whole picture, from 0, 0 to Width, Height.
    CGEORec* GetBaseGeoRec();

    /// Decodes a scan line.
    ///
    /// @param line  0 to Height - 1
    /// @param dest  room for Width bytes, or null where there are none; receives a colour index a pixel
    /// @return      1, or 0 for a line out of range, an object that is not open, or a run that goes past
    ///              Width; in the last case `dest` holds the runs in front of that one, all else is untouched
    int getLine(int line, unsigned char* dest);

    /// Decodes a rectangle of the picture, line after line with nothing between.
    ///
    /// @param firstLine, lineCount  lines of the rectangle
    /// @param firstCol, colCount    columns of the rectangle
    /// @param dest                  room for lineCount x colCount bytes, or null where there are none;
    ///                              receives a colour index a pixel
    /// @return  1, also for a rectangle without pixels, or 0 for one that is not inside the picture and for
    ///          an object that is not open; `dest` is then untouched. A run that goes past Width is cut. A
    ///          negative Width or Height counts as 0.
    int getMultiLines(int firstLine, int lineCount, int firstCol, int colCount, unsigned char* dest);

    /// Gives one line of the picture reduced by whole factors: each pixel is the palette index nearest to the
    /// mean colour of a block.
    ///
    /// @param firstLine  first chart line of the blocks
    /// @param firstCol   first chart column of the first block
    /// @param colCount   chart columns to cover; those behind the last whole block are not used
    /// @param dest       room for colCount / xFactor bytes, or null where there are none
    /// @param xFactor    columns a block, 1 or more
    /// @param yFactor    lines a block, 1 or more
    /// @return           1, or 0 for a range that is not inside the picture, a factor below 1, an object that
    ///                   is not open, or memory that runs out; `dest` is then untouched
    int getAALine(int firstLine, int firstCol, int colCount, unsigned char* dest, int xFactor, int yFactor);

protected:
    /// Reads the text part from TextStream, which stands at its start and is left at its end. The base record
    /// gets the picture's size as its InsetRect; where it has points and infoOnly is 0, it is fitted to them
    /// and its vertices get their pixels, rounded.
    void ReadHeader(int infoOnly);

    /// Puts ChartFile at the first run of a line; a line out of range is taken as the nearest one. Does
    /// nothing where there is no line or no open file.
    void seekLine(long line);

    /// Reads the run at the current position of ChartFile. Needs only ChartFile and the three masks; does
    /// nothing without a file.
    ///
    /// @param colour     receives its colour index
    /// @param runLength  receives its length in pixels, 1 or more; held at the largest int
    void vNextCRL(int* colour, int* runLength);

    /// Widens the chart's colours to LogPalette and makes PaletteHandle of it.
    void BuildPal();

    /// Fills ColourIndex from LogPalette.
    void BuildPalIndex();

public:
    CString Version;                       ///< "1.0"
    CGEORec BaseRec;                       ///< the georeference of the whole chart
    char ChartName[256] = {};              ///< the chart's name, ended by a zero
    int DU = 0;                            ///< the number of the "DU=" key
    int Width = 0;                         ///< pixels in a scan line
    int Height = 0;                        ///< scan lines
    int BitsPerPixel = 0;                  ///< bits of colour in a run, 1 to 7
    PALETTEENTRY HeaderColours[256] = {};  ///< the chart's colours by colour index; peFlags is 0
    HPALETTE PaletteHandle = nullptr;      ///< owned; null where there is none
    int HeaderColourCount = 0;             ///< one above the highest colour index that a header named
    LOGPALETTE256 LogPalette;              ///< the palette as CreatePalette got it
    CString Path;                          ///< as OpenZellap got it
    std::ifstream TextStream;              ///< open only while OpenZellap runs
    std::FILE* ChartFile = nullptr;        ///< owned; null when not open
    int RunMask = 0;                       ///< run bits of a run's first byte
    int ColourMask = 0;                    ///< colour bits of a run's first byte
    int ColourShift = 0;                   ///< brings the colour bits down
    int LineCount = 0;                     ///< lines in the line table
    std::int32_t* LineOffsets = nullptr;   ///< LineCount + 1 file offsets, owned; the last is the table's own
    unsigned char ColourIndex[32 * 32 * 32] = {};  ///< palette index by the upper 5 bits of red, green, blue
};
