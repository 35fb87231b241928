/// CStdlib: the static helpers that the library and its host programs share.
#pragma once

#include "TAVIX20/platform/cstring.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/geometry.h"

#include <ctime>
#include <utility>
#include <vector>

class CStringArray;
class CVariant;

namespace TavixArray {
class CPointArray;
}

/// Null text counts as the empty text everywhere. Letters, digits, white space and numbers are
/// those of ASCII, whatever the locale.
class TAVIX_API CStdlib {
public:
    // The machine.

    /// Number of processors that this process may run on; at least 1.
    static int GetNumOfProcessors();

    /// Dispatches pending messages of the calling thread, without waiting for any: with count -1
    /// until none is pending, with count > 0 up to count messages, else none. A message is one pass
    /// of the thread's Qt event dispatcher: the events pending when it begins. With count -1,
    /// timers have one turn, after the others. Does nothing without an application object, in a
    /// thread without an event dispatcher, and when handlers that dispatch messages are nested 100
    /// deep.
    static void DoEvents(int count);

    // Calculator.

    /// The value of numbers joined by "+", "-", "*" and "/", strictly from left to right:
    /// "2+3*4" is 20. Starts at 0, so "-5+3" is -2. Of adjacent operators the last one counts, one
    /// at the end does nothing, and every other character is dropped; an expression may be of any
    /// length. Division by 0 gives an infinity or no number, as in floating-point arithmetic.
    static double GetCalcString(const char *expression);

    // Token strings: entries of a key, "=" and a value, separated by ";". The first occurrence of
    // the key anywhere in the text counts, even inside another key's name; case counts. The empty
    // key is found at the start of every text.

    /// The value stored for the key; "" when there is none.
    static CString GetTokenValue(const char *text, const char *key);
    /// The text with "key=value" at its end; the entry that held the key before is removed. An
    /// entry whose value is empty is not, so the key then stands twice.
    static CString SetTokenValue(const char *text, const char *key, const char *value);
    /// The text without what goes from the key through the next ";", or through the end.
    static CString RemoveTokenValue(const char *text, const char *key);

    // Colour codes: three components in the three bytes of a COLORREF, the first in the low byte.

    /// Y, U and V, each 0 to 255; U and V are 128 for greys. ITU-R BT.601 weights.
    static COLORREF RGBtoYUV(COLORREF colour);
    static COLORREF YUVtoRGB(COLORREF colour); ///< Channels beyond 0 to 255 are cut to them.
    /// Hue, lightness and saturation, each scaled to 0 to 255 and truncated. Pure red has the hue
    /// 255, not 0; greys have hue and saturation 0.
    static COLORREF RGBtoHLS(COLORREF colour);
    /// The colour in the middle of those that RGBtoHLS gives this code: no channel is off by more
    /// than 6, and greys and the pure colours come back exactly.
    static COLORREF HLStoRGB(COLORREF colour);
    static COLORREF RGBtoCMYK(COLORREF colour); ///< Always 0.
    static COLORREF CMYKtoRGB(COLORREF colour); ///< Always 0.

    // Geometry. y grows downwards. Directions are degrees counter-clockwise as the picture is seen,
    // 0 to the right.
    /// Euclidean distance of two points, computed in double precision and truncated toward 0.
    static long Distance(int x1, int y1, int x2, int y2);
    /// The direction from the first point to the second, 0 <= result < 360; 0 for equal points.
    static double GetDegree(int x1, int y1, int x2, int y2);
    /// The angle at (cx, cy) between the ways to the two points, 0 <= result <= 180; a point on the
    /// vertex lies to the right of it.
    static double GetDegree3Point(int x1, int y1, int cx, int cy, int x2, int y2);
    /// The point turned about the centre, clockwise as the picture is seen for positive degrees;
    /// both coordinates truncated toward 0 and cut to 32 bits.
    static CPoint RotatePoint(const CPoint &point, double degrees, const CPoint &centre);
    /// The same without truncation.
    static void RotatePoint(double x, double y, double degrees, double cx, double cy, double *outX,
                            double *outY);
    /// Each appends the 8-connected pixels of a line, a circle or an ellipse and returns how many;
    /// 0 for a radius below 0 or above 2^27. No pixel comes twice.
    static int GetLineSegment(int x1, int y1, int x2, int y2, TavixArray::CPointArray &points);
    static int GetCycleSegment(int cx, int cy, int radius, TavixArray::CPointArray &points);
    static int GetEllipseSegment(int cx, int cy, int radiusX, int radiusY,
                                 TavixArray::CPointArray &points);
    /// Makes a line drawn by hand plainer: drops points that repeat the one before, then those that
    /// lie within the tolerance, in pixels, of the line through the others (Douglas and Peucker,
    /// The Canadian Cartographer 10, 1973). The first and the last point stay, and the order;
    /// returns how many are left. A tolerance below 0 counts as 0.
    static int FreePointTuning(TavixArray::CPointArray &points, double tolerance = 1.0);
    static double PointToMM(double points);      ///< A point is 1/72 of 25.4 mm.
    static double MMToPoint(double millimetres); ///< The inverse.

    // Text.

    static int IsNumeric(const char *text);     ///< 1 for "0" to "9" only; also for "".
    static int IsAlphabetics(const char *text); ///< 1 for "A" to "Z", "a" to "z" only; also for "".
    /// Every byte is a character of ISO 8859-1, of which ASCII is the first half.
    static CString AsciiToUTF8(const char *text);
    /// Characters beyond ISO 8859-1, and bytes that are not UTF-8, become "?".
    static CString UTF8ToAscii(const char *text);
    static CString TextToHex(const char *text); ///< Two capital hexadecimal digits a byte.
    /// The inverse; "" for an odd number of digits and for anything that is no digit.
    static CString HexToText(const char *hex);
    /// The text without any of the characters.
    static CString TextToNoChars(const char *text, const char *characters);
    static CString TextToNoSpace(const char *text); ///< Without white space.
    /// The index of the last occurrence, or -1.
    static int ReverseFind(const char *text, const char *sought);
    /// Appends the arguments of a command line and returns how many: white space separates them but
    /// between double quotes, which are dropped. Quotes that are not closed reach to the end.
    static int GetParseArgs(const char *commandLine, CStringArray &arguments);
    /// Letters, digits and "-._~" stay, every other byte becomes "%" and two digits (RFC 3986).
    static CString URLEncode(const char *text);
    /// The inverse; "+" becomes a blank. A "%" without two hexadecimal digits behind it stays.
    static CString URLDecode(const char *text);

    /// Korean text in UTF-8, typed with the two-set keyboard layout, as the Latin keys that were
    /// struck for it, syllables and single letters alike; all other bytes stay.
    static CString KorToEng(const char *text);
    /// The time of "YYYY-MM-DD HH:MM:SS", or with a "T" between (ISO 8601): local time unless a "Z"
    /// or an offset follows. Without seconds the minute begins, without a time the day; -1 for what
    /// is no such time.
    static std::time_t StrToTimeObj(const char *text);

    // Variants. A variant may hold the bytes of anything, zeros included, as its text.

    static CString VarToString(const CVariant &value); ///< Its text.
    /// Nothing is copied, and the variant is empty, for null and for a size below 1.
    static CVariant BlobToVariant(const void *data, int size);
    /// Replaces the blob by the bytes of the text; returns how many.
    static int VariantToBlob(const CVariant &value, std::vector<unsigned char> &blob);

    // Numbers. decimals are counted behind the point, in the shortest text that reads back as the
    // number: 0.29 has the decimals 2 and 9. They are cut to 0 to 18 where they make a long.

    /// Hexadecimal digits, a "0x" and white space before them skipped, up to what is none; 0 when
    /// there are none, LONG_MAX for more than it.
    static long HexStrToDecimal(const char *hex);
    static CString LongToStr(long number);
    static double TruncateFloat(double value, int decimals); ///< Toward 0.
    /// The whole part; cut to the range of long, 0 for what is no finite number.
    static long FloatFrontNumber(double value);
    /// The first decimals as a whole number with the sign of value: (-3.057, 2) gives -5.
    static long FloatBackNumber(double value, int decimals);
    /// front + back / 10^decimals, which joins what the two functions above took apart.
    static double MakeFloat(long front, long back, int decimals);
    template <typename T>
    static void Swap(T &a, T &b) {
        std::swap(a, b);
    }

    // Paths as text. Their separator is "\" where they hold one, else "/". A file name's extension
    // stands behind its last "."; dots at the start belong to the name.

    static CString GetParsePathName(const char *path); ///< Before the last separator, or all.
    static CString GetParseFileName(const char *path); ///< Behind the last separator, or all.
    static CString GetParseFileNameNoExt(const char *path);
    static CString GetParseExt(const char *path); ///< Without ".".
    static CString GetExtName(const char *path);  ///< The same.
    /// The path with "." and the extension behind it unless it has that already, in any case.
    static CString GetAddExtName(const char *path, const char *extension);
    /// The parts of GetParsePathName (but "" when there is no separator), GetParseFileNameNoExt and
    /// GetParseExt.
    static void SplitPath(const char *path, CString &folder, CString &name, CString &extension);
    static CString ToUnixPath(const char *path);    ///< Every "\" becomes "/".
    static CString ToWindowsPath(const char *path); ///< Every "/" becomes "\".

    // Files and folders. Here only "/" separates. Patterns have wildcards in their last part: "*"
    // for any characters, "?" for one; "*.*" is every file. Folders do not match.

    static int FileExist(const char *path);   ///< 1 for what exists and is no folder.
    static long FileLength(const char *path); ///< In bytes; -1 when there is no such file.
    /// Seconds from the last change of the second file to that of the first: positive when the
    /// first is newer. 0 when one is missing.
    static long GetFileTimeDiff(const char *first, const char *second);
    /// The version of a shared library: what stands behind ".so." in the name of the file that the
    /// path leads to, "1.2.3"; "" when there is no such file or name.
    static CString GetFileVersion(const char *path);
    static int ExistFolder(const char *path); ///< 1 for a folder or a link to one.
    /// Makes the folder and those around it; 1 when it exists in the end.
    static int MakeFolder(const char *path);
    /// Removes the folder with all it holds; links in it are removed, not followed. 0, and nothing
    /// is removed, for "", links, the root, "." and "..", the current folder and those around it. 0
    /// also when something could not be removed.
    static int RemoveFolder(const char *path);
    static int DeleteFiles(const char *pattern); ///< Returns how many were deleted.
    /// Appends the paths of the files, in byte order, and returns how many.
    static int GetFindFiles(const char *pattern, CStringArray &files);
    static int GetFileCount(const char *pattern);
    /// Makes a symbolic link; 0 when it cannot, also when something stands there already.
    static int CreateLink(const char *target, const char *link);
    /// Appends "YYYY-MM-DD HH:MM:SS text" in local time and CR LF; 1 on success.
    static int LogWrite(const char *path, const char *text);
    /// Both do nothing and return 0.
    static int Zip(const char *source, const char *target);
    static int UnZip(const char *source, const char *target);

    // Where things are: absolute, without a separator at the end; "" when there is no answer.

    static CString GetTempFolder(); ///< The folder for temporary files.
    /// A new, empty file, or folder, of the user's own in it. Its name starts with the prefix,
    /// which may not hold "/".
    static CString GetTempFileNameA(const char *prefix = "");
    static CString GetTempFolderName(const char *prefix = "");
    static CString GetInstancePath(); ///< The folder of the running program.
    static CString GetDllPath();      ///< The folder of this library.
    static CString GetDesktopFolder();
    static CString GetMyDocumentFolder();
    static CString GetMyMusicFolder();
    static CString GetMyPictureFolder();
    static CString GetProgramFilesFolder(); ///< The folder of programs that are added: "/opt".
    static CString GetSystemFolder();       ///< The folder of the system's C library.
    static CString GetWindowsFolder();      ///< The folder of the system's own files: "/usr".
    static CString GetWindowsFontFolder();  ///< The folder of the fonts of all users.
    /// Numbers by which programs name folders; several stand for the functions above.
    enum ShellFolder {
        CSIDL_DESKTOP = 0x00,
        CSIDL_PERSONAL = 0x05, ///< GetMyDocumentFolder.
        CSIDL_MYMUSIC = 0x0D,
        CSIDL_MYVIDEO = 0x0E,
        CSIDL_DESKTOPDIRECTORY = 0x10,
        CSIDL_FONTS = 0x14,
        CSIDL_APPDATA = 0x1A,       ///< The user's settings of programs.
        CSIDL_LOCAL_APPDATA = 0x1C, ///< The user's data of programs.
        CSIDL_WINDOWS = 0x24,
        CSIDL_SYSTEM = 0x25,
        CSIDL_PROGRAM_FILES = 0x26,
        CSIDL_MYPICTURES = 0x27,
        CSIDL_PROFILE = 0x28 ///< The user's own folder.
    };
    /// The folder of a number above; "" for other numbers.
    static CString GetShellFolder(int number);
};
