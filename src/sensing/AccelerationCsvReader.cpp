#include "AccelerationCsvReader.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <vector>

#include "AccelerationRecording.h"

namespace {

constexpr double kStandardGravity = 9.80665;
// Times beyond this many nanoseconds either way are rejected, so that the span of any
// two accepted times fits in 64 bits.
constexpr qint64 kMaxAbsTimeNs = 4'000'000'000'000'000'000;
constexpr qsizetype kBlockSize = 4 << 20;
// A line longer than this is no recording (a header of a hundred columns is far shorter);
// it is refused at once instead of being gathered into memory.
constexpr qsizetype kMaxLineBytes = 8192;
// Consecutive samples further apart than this are refused: replaying the gap would mean
// counting through it tick by tick and storing every empty interval.
constexpr qint64 kMaxGapNs = 86'400'000'000'000;
// No accelerometer a person carries reads more than this (phones saturate at 2 to 32 g).
constexpr double kMaxAbsG = 1000.0;

enum class Role : quint8 { Ignored, Time, X, Y, Z };

struct Column {
    QString title;  // as written in the header, for messages
    int index = -1;
};

bool isBlank(const char* begin, const char* end) {
    for (const char* p = begin; p != end; ++p) {
        if (*p != ' ' && *p != '\t') return false;
    }
    return true;
}

void trim(const char*& begin, const char*& end) {
    while (begin != end && (*begin == ' ' || *begin == '\t')) ++begin;
    while (end != begin && (end[-1] == ' ' || end[-1] == '\t')) --end;
    if (end - begin >= 2 && *begin == '"' && end[-1] == '"') {
        ++begin;
        --end;
        while (begin != end && (*begin == ' ' || *begin == '\t')) ++begin;
        while (end != begin && (end[-1] == ' ' || end[-1] == '\t')) --end;
    }
}

// Reads a decimal number ("12.5", "-3", "1.25e-3") at p, scaled by 10^scale and rounded
// to an integer; exact for the nine decimals a nanosecond time stamp needs. Returns
// where the number stops, or null if there is none or it is out of range.
const char* scanScaledDecimalCarefully(const char* p, const char* end, int scale, qint64& out);

const char* scanScaledDecimal(const char* p, const char* end, int scale, qint64& out) {
    // The usual time stamp ("12345.670000000") has at most 18 digits and no exponent;
    // it is read without per-digit checks. Anything else takes the careful path.
    const char* start = p;
    bool negative = false;
    if (p != end && (*p == '+' || *p == '-')) negative = *p++ == '-';
    quint64 mantissa = 0;
    int digits = 0;
    int decimals = 0;
    for (; p != end && static_cast<unsigned>(*p - '0') < 10; ++p, ++digits) {
        mantissa = mantissa * 10 + static_cast<unsigned>(*p - '0');
    }
    if (p != end && *p == '.') {
        for (++p; p != end && static_cast<unsigned>(*p - '0') < 10; ++p, ++digits, ++decimals) {
            mantissa = mantissa * 10 + static_cast<unsigned>(*p - '0');
        }
    }
    if (digits == 0 || digits > 18 || decimals > scale || (p != end && (*p == 'e' || *p == 'E'))) {
        return scanScaledDecimalCarefully(start, end, scale, out);
    }
    for (int i = decimals; i < scale; ++i) {
        if (mantissa > static_cast<quint64>(kMaxAbsTimeNs) / 10) return nullptr;
        mantissa *= 10;
    }
    if (mantissa > static_cast<quint64>(kMaxAbsTimeNs)) return nullptr;
    out = negative ? -static_cast<qint64>(mantissa) : static_cast<qint64>(mantissa);
    return p;
}

const char* scanScaledDecimalCarefully(const char* p, const char* end, int scale, qint64& out) {
    bool negative = false;
    if (p != end && (*p == '+' || *p == '-')) negative = *p++ == '-';
    quint64 mantissa = 0;
    int digits = 0;  // significant digits kept in the mantissa
    int exponent = 0;
    bool anyDigit = false;
    bool roundUp = false;  // first dropped digit >= 5
    bool dropped = false;
    for (; p != end && *p >= '0' && *p <= '9'; ++p) {
        anyDigit = true;
        if (digits < 18) {
            mantissa = mantissa * 10 + static_cast<quint64>(*p - '0');
            if (mantissa != 0) ++digits;
        } else {
            if (!dropped) roundUp = *p >= '5';
            dropped = true;
            ++exponent;
        }
    }
    if (p != end && *p == '.') {
        ++p;
        for (; p != end && *p >= '0' && *p <= '9'; ++p) {
            anyDigit = true;
            if (digits < 18) {
                mantissa = mantissa * 10 + static_cast<quint64>(*p - '0');
                if (mantissa != 0) ++digits;
                --exponent;
            } else if (!dropped) {
                roundUp = *p >= '5';
                dropped = true;
            }
        }
    }
    if (!anyDigit) return nullptr;
    if (p != end && (*p == 'e' || *p == 'E')) {
        ++p;
        bool expNegative = false;
        if (p != end && (*p == '+' || *p == '-')) expNegative = *p++ == '-';
        if (p == end || *p < '0' || *p > '9') return nullptr;
        int e = 0;
        for (; p != end && *p >= '0' && *p <= '9'; ++p) {
            if (e < 10000) e = e * 10 + (*p - '0');
        }
        exponent += expNegative ? -e : e;
    }
    if (roundUp) ++mantissa;  // half away from zero at the 18th digit

    long long total = static_cast<long long>(exponent) + scale;
    if (mantissa == 0) {
        out = 0;
        return p;
    }
    if (total >= 0) {
        for (; total > 0; --total) {
            if (mantissa > static_cast<quint64>(kMaxAbsTimeNs) / 10) return nullptr;
            mantissa *= 10;
        }
    } else {
        quint64 divisor = 1;
        for (; total < 0 && divisor <= mantissa; ++total) divisor *= 10;
        if (total < 0) {
            mantissa = 0;  // far below a nanosecond
        } else {
            const quint64 quotient = mantissa / divisor;
            const quint64 remainder = mantissa % divisor;
            mantissa = quotient + (remainder * 2 >= divisor ? 1 : 0);
        }
    }
    if (mantissa > static_cast<quint64>(kMaxAbsTimeNs)) return nullptr;
    out = negative ? -static_cast<qint64>(mantissa) : static_cast<qint64>(mantissa);
    return p;
}

bool parseScaledDecimal(const char* p, const char* end, int scale, qint64& out) {
    return scanScaledDecimal(p, end, scale, out) == end;
}

// Reads a plain decimal ("-0.81163436") at p when its digits fit a double exactly, so
// that one division by a power of ten gives the correctly rounded value, the same that
// std::from_chars gives. Returns where it stops, or null for anything else (exponents,
// long mantissas), which then takes the general path.
const char* scanPlainDouble(const char* p, const char* end, double& out) {
    static constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                              1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                              1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    bool negative = false;
    if (p != end && (*p == '-' || *p == '+')) negative = *p++ == '-';
    quint64 mantissa = 0;
    int digits = 0;
    int decimals = 0;
    for (; p != end && static_cast<unsigned>(*p - '0') < 10; ++p, ++digits) {
        mantissa = mantissa * 10 + static_cast<unsigned>(*p - '0');
    }
    if (p != end && *p == '.') {
        for (++p; p != end && static_cast<unsigned>(*p - '0') < 10; ++p, ++digits, ++decimals) {
            mantissa = mantissa * 10 + static_cast<unsigned>(*p - '0');
        }
    }
    // Up to 19 digits cannot overflow the mantissa; exactness needs at most 2^53.
    if (digits == 0 || digits > 19 || mantissa > (quint64{1} << 53) || decimals > 22) {
        return nullptr;
    }
    if (p != end && (*p == 'e' || *p == 'E')) return nullptr;
    const double value = static_cast<double>(mantissa) / kPowersOfTen[decimals];
    out = negative ? -value : value;
    return p;
}

bool parseDouble(const char* p, const char* end, double& out) {
    if (p != end && *p == '+') ++p;
    if (p == end || (*p != '-' && *p != '.' && (*p < '0' || *p > '9'))) return false;
    const auto [next, ec] = std::from_chars(p, end, out);
    return ec == std::errc() && next == end;
}

// True for number syntax, even when the value is too large for a double.
bool isNumberText(const char* p, const char* end) {
    if (p != end && *p == '+') ++p;
    if (p == end || (*p != '-' && *p != '.' && (*p < '0' || *p > '9'))) return false;
    double ignored = 0.0;
    const auto [next, ec] = std::from_chars(p, end, ignored);
    return next == end && (ec == std::errc() || ec == std::errc::result_out_of_range);
}

QString formatSeconds(qint64 ns) {
    const QString sign = ns < 0 ? QStringLiteral("-") : QString();
    const quint64 magnitude = ns < 0 ? 0 - static_cast<quint64>(ns) : static_cast<quint64>(ns);
    return QStringLiteral("%1%2.%3 s")
        .arg(sign)
        .arg(magnitude / 1'000'000'000)
        .arg(magnitude % 1'000'000'000, 9, 10, QLatin1Char('0'));
}

QString shown(const char* begin, const char* end) {
    constexpr qsizetype kMaxShown = 24;
    const qsizetype length = end - begin;
    QString text = QString::fromUtf8(begin, std::min(length, kMaxShown));
    for (QChar& c : text) {
        if (c.unicode() < 0x20) c = QLatin1Char('?');  // keep the message on one line
    }
    if (length > kMaxShown) text += QStringLiteral("...");
    return text;
}

// Splits a header line into its column titles; quotes may protect commas.
QStringList splitHeader(const char* begin, const char* end) {
    QStringList titles;
    QByteArray field;
    bool quoted = false;
    for (const char* p = begin; p != end; ++p) {
        if (*p == '"') {
            if (quoted && p + 1 != end && p[1] == '"') {
                field += '"';
                ++p;
            } else {
                quoted = !quoted;
            }
        } else if (*p == ',' && !quoted) {
            titles << QString::fromUtf8(field).trimmed();
            field.clear();
        } else {
            field += *p;
        }
    }
    titles << QString::fromUtf8(field).trimmed();
    return titles;
}

// "Acceleration x (m/s^2)" -> name "Acceleration x", unit "m/s^2"; false without a unit.
bool splitTitle(const QString& title, QString& name, QString& unit) {
    if (!title.endsWith(QLatin1Char(')'))) return false;
    const qsizetype open = title.lastIndexOf(QLatin1Char('('));
    if (open < 0) return false;
    name = title.left(open).trimmed();
    unit = title.mid(open + 1, title.size() - open - 2).trimmed();
    return true;
}

// Powers of ten from the unit to nanoseconds; -1 for an unknown unit.
int timeScale(const QString& unit) {
    if (unit == QLatin1String("s")) return 9;
    if (unit == QLatin1String("ms")) return 6;
    if (unit == QLatin1String("us") || unit == QStringLiteral("\u00b5s") ||
        unit == QStringLiteral("\u03bcs")) {
        return 3;
    }
    if (unit == QLatin1String("ns")) return 0;
    return -1;
}

// Divisor that turns the unit into g; 0 for an unknown unit.
double accelerationDivisor(const QString& unit) {
    if (unit == QLatin1String("g") || unit == QLatin1String("G")) return 1.0;
    if (unit == QLatin1String("m/s^2") || unit == QStringLiteral("m/s\u00b2") ||
        unit == QLatin1String("m/s2")) {
        return kStandardGravity;
    }
    return 0.0;
}

// The axis a column name ends in ("Acceleration x" -> 'x'), or 0.
char axisOf(const QString& name) {
    if (name.size() < 2) return 0;
    const QChar separator = name.at(name.size() - 2);
    if (separator != QLatin1Char(' ') && separator != QLatin1Char('_')) return 0;
    const QChar axis = name.back().toLower();
    return (axis == QLatin1Char('x') || axis == QLatin1Char('y') || axis == QLatin1Char('z'))
               ? static_cast<char>(axis.unicode())
               : 0;
}

class Parser {
public:
    Parser(const QString& name, AccelerationRecording* recording)
        : name_(name), recording_(recording) {}

    // Parses every complete line in [begin, end); returns where the unparsed rest
    // starts (everything when `final`).
    const char* Feed(const char* begin, const char* end, bool final) {
        const char* line = begin;
        while (line != end && error_.isEmpty()) {
            const qsizetype window = std::min<qsizetype>(end - line, kMaxLineBytes + 2);
            const char* newline = static_cast<const char*>(std::memchr(line, '\n', window));
            if (newline == nullptr && window > kMaxLineBytes + 1) {
                ++lineNumber_;
                Fail(QStringLiteral("the line is longer than %1 bytes; this is not a recording")
                         .arg(kMaxLineBytes));
                break;
            }
            if (newline == nullptr && !final) break;
            const char* lineEnd = newline ? newline : end;
            ++lineNumber_;
            ParseLine(line, lineEnd);
            line = newline ? newline + 1 : end;
        }
        return line;
    }

    bool Finish() {
        if (!error_.isEmpty()) return false;
        if (!headerSeen_) return Fail(QStringLiteral("the file is empty"), false);
        if (recording_->IsEmpty()) {
            return Fail(QStringLiteral("no samples after the header line"), false);
        }
        return true;
    }

    const QString& Error() const { return error_; }
    bool Failed() const { return !error_.isEmpty(); }

private:
    void ParseLine(const char* begin, const char* end) {
        if (end != begin && end[-1] == '\r') --end;
        if (lineNumber_ == 1 && end - begin >= 3 && std::memcmp(begin, "\xEF\xBB\xBF", 3) == 0) {
            begin += 3;  // byte-order mark
        }
        if (isBlank(begin, end)) return;
        if (!headerSeen_) {
            ParseHeader(begin, end);
            headerSeen_ = true;
            return;
        }
        ParseSample(begin, end);
    }

    void ParseHeader(const char* begin, const char* end) {
        const QStringList titles = splitHeader(begin, end);
        titles_ = titles;
        for (int i = 0; i < titles.size(); ++i) {
            QString name;
            QString unit;
            const bool hasUnit = splitTitle(titles[i], name, unit);
            const QString lower = (hasUnit ? name : titles[i]).toLower();
            if (lower.contains(QLatin1String("time")) && time_.index < 0) {
                if (!hasUnit) {
                    Fail(QStringLiteral("column %1 \"%2\" gives no unit in parentheses, "
                                        "such as \"Time (s)\"")
                             .arg(QString::number(i + 1), titles[i]));
                    return;
                }
                timeScale_ = timeScale(unit);
                if (timeScale_ < 0) {
                    Fail(QStringLiteral("column %1 \"%2\" has the unknown time unit \"%3\" "
                                        "(expected s, ms, us or ns)")
                             .arg(QString::number(i + 1), titles[i], unit));
                    return;
                }
                time_ = {titles[i], i};
                continue;
            }
            const char axis = axisOf(hasUnit ? name : titles[i]);
            if (axis == 0) continue;
            const int a = axis - 'x';
            if (axes_[a].index >= 0) continue;  // the first matching column wins
            const double divisor = hasUnit ? accelerationDivisor(unit) : 0.0;
            if (divisor == 0.0) {
                // Other sensors' axes (a gyroscope in rad/s) are extra columns; an
                // acceleration in a unit we do not know is an error.
                if (!lower.contains(QLatin1String("acc"))) continue;
                const QString problem =
                    hasUnit ? QStringLiteral("the unknown acceleration unit \"%1\"").arg(unit)
                            : QStringLiteral("no unit in parentheses");
                Fail(QStringLiteral("column %1 \"%2\" has %3 (expected m/s^2 or g)")
                         .arg(QString::number(i + 1), titles[i], problem));
                return;
            }
            axes_[a] = {titles[i], i};
            divisors_[a] = divisor;
        }

        if (time_.index < 0) {
            double number = 0.0;
            const int first = titles.isEmpty() ? -1 : 0;
            QByteArray firstField = first < 0 ? QByteArray() : titles[0].toUtf8();
            if (!firstField.isEmpty() &&
                parseDouble(firstField.constData(), firstField.constData() + firstField.size(),
                            number)) {
                Fail(
                    QStringLiteral("no header line; the first line must name the columns "
                                   "with their units, such as \"Time (s)\",\"Acceleration x "
                                   "(m/s^2)\",..."));
            } else {
                Fail(
                    QStringLiteral("no time column in the header (expected a column such as "
                                   "\"Time (s)\")"));
            }
            return;
        }
        for (int a = 0; a < 3; ++a) {
            if (axes_[a].index < 0) {
                const char axis = static_cast<char>('x' + a);
                Fail(QStringLiteral("no column for acceleration %1 in the header (expected a "
                                    "column such as \"Acceleration %1 (m/s^2)\")")
                         .arg(QLatin1Char(axis)));
                return;
            }
        }
        int last = time_.index;
        for (const Column& c : axes_) last = std::max(last, c.index);
        roles_.assign(static_cast<std::size_t>(last) + 1, Role::Ignored);
        roles_[time_.index] = Role::Time;
        roles_[axes_[0].index] = Role::X;
        roles_[axes_[1].index] = Role::Y;
        roles_[axes_[2].index] = Role::Z;
    }

    void ParseSample(const char* begin, const char* end) {
        qint64 timeNs = 0;
        std::array<double, 3> values{};
        const char* field = begin;
        const int columns = static_cast<int>(roles_.size());
        for (int i = 0; i < columns; ++i) {
            if (field == nullptr) {
                MissingValue(i);
                return;
            }
            const Role role = roles_[i];
            const int a = static_cast<int>(role) - static_cast<int>(Role::X);
            // Fast path: a bare number running right up to the comma or the line end.
            const char* stop = nullptr;
            if (role == Role::Time) {
                stop = scanScaledDecimal(field, end, timeScale_, timeNs);
            } else if (role != Role::Ignored) {
                stop = scanPlainDouble(field, end, values[a]);  // always finite as a float
            }
            if (stop != nullptr && (stop == end || *stop == ',')) {
                field = stop == end ? nullptr : stop + 1;
                continue;
            }

            const char* comma = static_cast<const char*>(std::memchr(field, ',', end - field));
            const char* fieldEnd = comma ? comma : end;
            if (role != Role::Ignored && !ParseField(i, role, field, fieldEnd, timeNs, values)) {
                return;
            }
            field = comma ? comma + 1 : nullptr;
        }
        if (haveTime_ && timeNs < lastTimeNs_) {
            Fail(QStringLiteral("time goes backwards, from %1 to %2")
                     .arg(formatSeconds(lastTimeNs_), formatSeconds(timeNs)));
            return;
        }
        if (haveTime_ && timeNs - lastTimeNs_ > kMaxGapNs) {
            Fail(QStringLiteral("time jumps from %1 to %2, a gap of more than a day")
                     .arg(formatSeconds(lastTimeNs_), formatSeconds(timeNs)));
            return;
        }
        for (int a = 0; a < 3; ++a) {
            if (std::abs(values[a] / divisors_[a]) > kMaxAbsG) {
                const int i = axes_[a].index;
                Fail(QStringLiteral("%1 in column %2 (\"%3\") is more than %4 g, which no "
                                    "accelerometer reads")
                         .arg(values[a])
                         .arg(i + 1)
                         .arg(titles_[i])
                         .arg(kMaxAbsG));
                return;
            }
        }
        haveTime_ = true;
        lastTimeNs_ = timeNs;
        // To g in double, then to single precision.
        recording_->Append(timeNs, {static_cast<float>(values[0] / divisors_[0]),
                                    static_cast<float>(values[1] / divisors_[1]),
                                    static_cast<float>(values[2] / divisors_[2])});
    }

    // A value the fast path did not take: quoted, padded, in exponent form, or bad.
    bool ParseField(int i, Role role, const char* b, const char* e, qint64& timeNs,
                    std::array<double, 3>& values) {
        trim(b, e);
        if (b == e) {
            Fail(QStringLiteral("empty value in column %1 (\"%2\")")
                     .arg(QString::number(i + 1), titles_[i]));
            return false;
        }
        if (role == Role::Time) {
            if (!parseScaledDecimal(b, e, timeScale_, timeNs)) {
                BadValue(i, b, e, isNumberText(b, e));
                return false;
            }
            return true;
        }
        const int a = static_cast<int>(role) - static_cast<int>(Role::X);
        double& value = values[a];
        if (!parseDouble(b, e, value)) {
            BadValue(i, b, e, isNumberText(b, e));
            return false;
        }
        if (!std::isfinite(static_cast<float>(value / divisors_[a]))) {
            BadValue(i, b, e, std::isfinite(value));
            return false;
        }
        return true;
    }

    void MissingValue(int column) {
        Fail(QStringLiteral("missing value for column %1 (\"%2\")")
                 .arg(QString::number(column + 1), titles_[column]));
    }

    // A value that is no number, or a number too large to use.
    void BadValue(int column, const char* begin, const char* end, bool isNumber) {
        Fail(QStringLiteral("\"%1\" in column %2 (\"%3\") is %4")
                 .arg(shown(begin, end), QString::number(column + 1), titles_[column],
                      isNumber ? QStringLiteral("out of range") : QStringLiteral("not a number")));
    }

    bool Fail(const QString& problem, bool withLine = true) {
        error_ = withLine ? QStringLiteral("%1: line %2: %3")
                                .arg(name_, QString::number(lineNumber_), problem)
                          : QStringLiteral("%1: %2").arg(name_, problem);
        return false;
    }

    QString name_;
    AccelerationRecording* recording_;
    QString error_;
    qint64 lineNumber_ = 0;
    bool headerSeen_ = false;
    Column time_;
    std::array<Column, 3> axes_;
    std::array<double, 3> divisors_{1.0, 1.0, 1.0};
    int timeScale_ = 9;
    QStringList titles_;
    std::vector<Role> roles_;
    bool haveTime_ = false;
    qint64 lastTimeNs_ = 0;
};

bool finish(Parser& parser, AccelerationRecording* recording, QString* error) {
    if (parser.Finish()) return true;
    *recording = AccelerationRecording();
    if (error) *error = parser.Error();
    return false;
}

}  // namespace

bool AccelerationCsvReader::ReadText(std::string_view text, const QString& name,
                                     AccelerationRecording* recording, QString* error) {
    *recording = AccelerationRecording();
    Parser parser(name, recording);
    parser.Feed(text.data(), text.data() + text.size(), true);
    return finish(parser, recording, error);
}

bool AccelerationCsvReader::ReadFile(const QString& path, AccelerationRecording* recording,
                                     QString* error) {
    *recording = AccelerationRecording();
    // Reading a pipe or a device could block or never end; a recording is a regular file.
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        if (error) *error = QStringLiteral("%1: not a regular file").arg(path);
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error) *error = QStringLiteral("%1: cannot open: %2").arg(path, file.errorString());
        return false;
    }
    const qint64 fileSize = file.size();
    Parser parser(path, recording);
    std::vector<char> buffer(static_cast<std::size_t>(kBlockSize));
    std::size_t kept = 0;  // bytes of an unfinished line carried over from the last block
    bool reserved = false;
    for (;;) {
        const qint64 got =
            file.read(buffer.data() + kept, static_cast<qint64>(buffer.size() - kept));
        if (got < 0) {
            if (error) *error = QStringLiteral("%1: cannot read: %2").arg(path, file.errorString());
            *recording = AccelerationRecording();
            return false;
        }
        const bool atEnd = got == 0;
        const char* begin = buffer.data();
        const char* end = begin + kept + static_cast<std::size_t>(got);
        const char* rest = parser.Feed(begin, end, atEnd);
        if (parser.Failed() || atEnd) break;
        if (!reserved && recording->Size() > 1000 && fileSize > 0) {
            // Size the sample arrays once from the first block's bytes per line.
            const double bytesPerSample = static_cast<double>(rest - begin) / recording->Size();
            recording->Reserve(static_cast<std::size_t>(fileSize / bytesPerSample * 1.02) + 16);
            reserved = true;
        }
        kept = static_cast<std::size_t>(end - rest);
        std::memmove(buffer.data(), rest, kept);
    }
    return finish(parser, recording, error);
}
