#include "platform/engine/postgres/ServerFunctions.h"

#include "platform/text/TextCompare.h"

#include <QList>

namespace {

constexpr char32_t endOfCodes = 0x110000;

/// Letters are looked up block by block, and only in texts that have any of the block: a list costs each character of a
/// text its length. All functions ask by the same few regular expressions, as the server keeps 32 at hand and takes a
/// hundred times longer for one that it has to read anew.
struct Block {
    char32_t from, to;
    bool endsTier = false; ///< a text without characters behind it is done here
};
constexpr char32_t endOfLatin = 0x100;
// Capitals and small letters lie apart where the alphabet has them so.
constexpr Block blocks[] = {
    {0x80, 0xdf},     {0xdf, endOfLatin, true}, {endOfLatin, 0x180}, {0x180, 0x370},        {0x370, 0x3ac},
    {0x3ac, 0x400},   {0x400, 0x430},           {0x430, 0x460},      {0x460, 0x530, true},  {0x530, 0x1e00},
    {0x1e00, 0x2000}, {0x2000, 0xac00},         {0xac00, 0x10000},   {0x10000, endOfCodes},
};

// ---- tables of letters, written for translate() and for the brackets of regular expressions

QString code(char32_t c) { return QStringLiteral("\\U%1").arg(uint(c), 8, 16, QLatin1Char('0')); }

QString range(char32_t first, char32_t last) { return code(first) + u'-' + code(last); }

/// What the brackets hold for the characters up to `end` that `belongs` takes.
template<typename Belongs>
QString characters(char32_t end, Belongs belongs)
{
    QString list;
    for (char32_t c = 1; c < end; ++c) {
        const char32_t first = c;
        while (c < end && belongs(c))
            ++c;
        if (c > first)
            list += range(first, c - 1);
    }
    return list;
}

/// Statements that bring the letters beyond ASCII of the text r into the form that `map` gives them.
template<typename Map>
QString mapping(Map map)
{
    QString statements, ends;
    const auto changes = [&](char32_t c) { return !QChar::isSurrogate(c) && map(c) != c; };
    for (const Block &block : blocks) {
        QString from, to;
        for (char32_t c = block.from; c < block.to; ++c)
            if (changes(c)) {
                from += QChar::fromUcs4(c);
                to += QChar::fromUcs4(map(c));
            }
        if (!from.isEmpty())
            statements += QStringLiteral("IF r ~ '[%1]' THEN r := translate(r, '%2', '%3'); END IF;\n")
                              .arg(range(block.from, block.to - 1), from, to);
        if (block.endsTier) {
            statements += QStringLiteral("IF r ~ '[^%1]' THEN\n").arg(range(1, block.to - 1));
            ends += QLatin1String("END IF;\n");
        }
    }
    return statements + ends;
}

// ---- the key
//
// First the base letters, in the order of their weights: marks up to "/" as they are, other marks behind "/" and the
// last character that there is; digits as they are, other digits behind ":"; letters. Then, behind chr(1), the text
// without its case, where that is not the same. So that a text's end weighs less than any character, chr(1) and chr(2)
// themselves stand behind chr(2).

enum Kind { Mark, Digit, Letter };

Kind kindOf(char32_t c) { return Kind(baseWeight(c) >> 21); }

char32_t baseLetter(char32_t c)
{
    const char32_t weight = baseWeight(c);
    return weight ? (weight & 0x1fffff) - 1 : c;
}

bool isAccent(char32_t c) { return baseWeight(c) == 0; }

QString marked(const QString &characters, const QString &mark)
{
    return QStringLiteral("r := regexp_replace(r, '([%1])', %2 || '\\1', 'g');\n").arg(characters, mark);
}

QString keyOfBaseLetters()
{
    const auto isOther = [](char32_t c, Kind kind) { return c > '9' && !isAccent(c) && kindOf(c) == kind; };
    const auto isOtherMark = [&](char32_t c) { return isOther(c, Mark); };
    const auto isOtherDigit = [&](char32_t c) { return isOther(c, Digit); };
    const QString lastCharacter = QStringLiteral("'/' || chr(1114111)");
    return QStringLiteral("IF r ~ '[^%1]' THEN\n").arg(range(1, endOfLatin - 1))
        + QStringLiteral("r := regexp_replace(r, '[%1]', '', 'g');\n").arg(characters(endOfCodes, isAccent))
        + marked(characters(endOfCodes, isOtherMark), lastCharacter)
        + marked(characters(endOfCodes, isOtherDigit), QStringLiteral("':'")) + QStringLiteral("ELSE\n")
        + marked(characters(endOfLatin, isOtherMark), lastCharacter) + QStringLiteral("END IF;\n");
}

// ---- the functions. "@" stands for the schema: an index is also kept up to date where no other schema is looked at.

/// A function of texts that are not plain ASCII.
QString wide(const char *name, const QString &declarations, const QString &statements, const char *result)
{
    return QStringLiteral("CREATE OR REPLACE FUNCTION @.%1(x text) RETURNS text LANGUAGE plpgsql "
                          "IMMUTABLE STRICT PARALLEL SAFE AS $f$ DECLARE %2; BEGIN\n%3RETURN %4; END $f$;\n")
        .arg(QLatin1String(name), declarations, statements, QLatin1String(result));
}

// Kinds of columns cannot be replaced. The bodies of the functions name each other, so none is looked through yet.
constexpr char domains[] = R"sql(DO $do$ BEGIN
    IF to_regtype(quote_ident(current_schema()) || '.yesno') IS NULL THEN
        CREATE DOMAIN yesno AS smallint CHECK (VALUE IN (-1, 0));
    END IF;
    IF to_regtype(quote_ident(current_schema()) || '.currency') IS NULL THEN
        CREATE DOMAIN currency AS numeric(19, 4) CHECK (VALUE BETWEEN -922337203685477 AND 922337203685477);
    END IF;
    PERFORM set_config('check_function_bodies', 'off', true);
    EXECUTE replace($all$%1$all$, '@', quote_ident(current_schema()));
END $do$)sql";

// A function that is one expression is put into the statement that calls it, which saves the call, unless it is STRICT
// or said to be less changeable than its parts. Hence STABLE here and there.
constexpr char texts[] = R"sql(
CREATE OR REPLACE FUNCTION @.vorlane_key(x text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
    SELECT CASE WHEN x COLLATE "C" ~ '^[\u0003-/0-9A-Za-z]*$' THEN lower(x COLLATE "C") ELSE @.vorlane_wide_key(x) END
$f$;
CREATE OR REPLACE FUNCTION @.vorlane_fold(x text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
    SELECT CASE WHEN octet_length(x) = char_length(x) THEN lower(x COLLATE "C") ELSE @.vorlane_wide_fold(x) END
$f$;
CREATE OR REPLACE FUNCTION @.vorlane_ucase(x text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
    SELECT CASE WHEN octet_length(x) = char_length(x) THEN upper(x COLLATE "C") ELSE @.vorlane_wide_ucase(x) END
$f$;
CREATE OR REPLACE FUNCTION @.vorlane_concatenate(VARIADIC x text[]) RETURNS text LANGUAGE sql STABLE PARALLEL SAFE AS $f$
    SELECT CASE WHEN num_nonnulls(VARIADIC x) > 0 THEN concat(VARIADIC x) END
$f$;

CREATE OR REPLACE FUNCTION @.vorlane_code(x text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
    SELECT '\U' || lpad(to_hex(ascii(x)), 8, '0')
$f$;
CREATE OR REPLACE FUNCTION @.vorlane_like(x text, pattern text) RETURNS boolean
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $f$
DECLARE
    sign text[] := string_to_array(@.vorlane_fold(pattern), NULL);
    expression text := '^';
    at integer := 1;
    stop integer;
    list text;
    negated boolean;
BEGIN
    WHILE at <= cardinality(sign) LOOP
        IF sign[at] = '[' THEN
            stop := array_position(sign, ']', at);
            IF stop IS NULL THEN
                RETURN false;
            END IF;
            negated := sign[at + 1] = '!' AND at + 2 < stop;
            at := at + CASE WHEN negated THEN 2 ELSE 1 END;
            IF at < stop THEN
                list := '';
                WHILE at < stop LOOP
                    IF at + 2 < stop AND sign[at + 1] = '-' THEN
                        IF ascii(sign[at]) <= ascii(sign[at + 2]) THEN
                            list := list || @.vorlane_code(sign[at]) || '-' || @.vorlane_code(sign[at + 2]);
                        END IF;
                        at := at + 3;
                    ELSE
                        list := list || @.vorlane_code(sign[at]);
                        at := at + 1;
                    END IF;
                END LOOP;
                expression := expression || CASE WHEN list = '' AND negated THEN '.' WHEN list = '' THEN '$.'
                                                 WHEN negated THEN '[^' || list || ']' ELSE '[' || list || ']' END;
            END IF;
        ELSE
            expression := expression || CASE sign[at] WHEN '*' THEN '.*' WHEN '?' THEN '.' WHEN '#' THEN '[0-9]'
                                                      ELSE @.vorlane_code(sign[at]) END;
        END IF;
        at := at + 1;
    END LOOP;
    RETURN @.vorlane_fold(x) COLLATE "C" ~ (expression || '$');
END $f$;
)sql";

constexpr char numbers[] = R"sql(
CREATE OR REPLACE FUNCTION @.vorlane_number(x text) RETURNS double precision LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
    SELECT CASE WHEN x COLLATE "C" ~ '^[-+]?[0-9]{1,15}(\.[0-9]{1,15})?$' THEN x::double precision ELSE @.vorlane_wide_number(x) END
$f$;
CREATE OR REPLACE FUNCTION @.vorlane_wide_number(x text) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $f$
DECLARE
    exact numeric;
BEGIN
    IF length(x) > 400 OR x COLLATE "C" !~ '^&(?:(?:\$?&[-+]?|[-+]&\$)&#|\(&\$?&#&\))&$' THEN
        RETURN NULL;
    END IF;
    exact := regexp_replace(x, '[^-+.0-9eE]', '', 'g');
    -- Beyond these the server would refuse the statement.
    IF abs(exact) > 1.7976931348623158e308 OR (abs(exact) < 2.5e-324 AND exact <> 0) THEN
        RETURN NULL;
    END IF;
    RETURN CASE WHEN strpos(x, '(') > 0 THEN -exact ELSE exact END;
END $f$;
CREATE OR REPLACE FUNCTION @.vorlane_required_number(x text) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $f$
DECLARE
    number double precision := @.vorlane_number(x);
BEGIN
    IF number IS NULL THEN
        RAISE EXCEPTION 'no number: %', left(x, 100) USING ERRCODE = '22P02';
    END IF;
    RETURN number;
END $f$;

-- A cast gives 15 digits, as the program shows; above, the program shows all that a whole number has.
CREATE OR REPLACE FUNCTION @.vorlane_text(x double precision) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
    SELECT CASE WHEN x BETWEEN -999999999999999 AND 999999999999999 THEN trim_scale(x::numeric)::text
                ELSE @.vorlane_long_text(x) END
$f$;
CREATE OR REPLACE FUNCTION @.vorlane_long_text(x double precision) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $f$
DECLARE
    power integer := log(2, abs(x)::numeric)::integer - 53;
BEGIN
    RETURN trim_scale(round((x / 2::double precision ^ power)::bigint * 2::numeric ^ power));
END $f$;
CREATE OR REPLACE FUNCTION @.vorlane_text(x numeric) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
    SELECT CASE WHEN scale(x) <= 4 AND x BETWEEN -99999999999 AND 99999999999 THEN trim_scale(x)::text
                ELSE @.vorlane_text(x::double precision) END
$f$;

-- Rounded to money's four places first: see Format::currency().
CREATE OR REPLACE FUNCTION @.vorlane_currency(x double precision) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $f$
DECLARE
    whole double precision := trunc(abs(x));
    places double precision := (abs(x) - whole) * 10000;
    cents integer := (trunc(places) + CASE WHEN places - trunc(places) >= 0.5 THEN 1 ELSE 0 END + 50)::integer / 100;
    digits text;
BEGIN
    IF x IS NULL THEN
        RETURN '';
    END IF;
    IF cents = 100 THEN
        cents := 0;
        whole := whole + 1;
    END IF;
    digits := @.vorlane_text(whole);
    IF whole >= 1000 THEN
        digits := regexp_replace(digits, '(\d)(?=(\d{3})+$)', '\1,', 'g');
    END IF;
    digits := '$' || digits || '.' || lpad(cents::text, 2, '0');
    RETURN CASE WHEN x < 0 AND (whole > 0 OR cents > 0) THEN '(' || digits || ')' ELSE digits END;
END $f$;
CREATE OR REPLACE FUNCTION @.vorlane_currency(x numeric) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
    SELECT @.vorlane_currency(x::double precision)
$f$;
CREATE OR REPLACE FUNCTION @.vorlane_currency(x text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
    SELECT @.vorlane_currency(@.vorlane_required_number(x))
$f$;
)sql";

constexpr char dates[] = R"sql(
CREATE OR REPLACE FUNCTION @.vorlane_short_date(x timestamp) RETURNS text LANGUAGE sql STABLE PARALLEL SAFE AS $f$
    SELECT COALESCE(to_char(x, 'YYYY-MM-DD'), '')
$f$;
CREATE OR REPLACE FUNCTION @.vorlane_short_date(x text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
    SELECT COALESCE(left(x, 10), '')
$f$;
-- Two digits mean 1930 to 2029.
CREATE OR REPLACE FUNCTION @.vorlane_year(year integer, long boolean) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
    SELECT year + CASE WHEN long THEN 0 WHEN year < 30 THEN 2000 ELSE 1900 END
$f$;
CREATE OR REPLACE FUNCTION @.vorlane_day(year integer, month integer, day integer) RETURNS date
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
    SELECT CASE WHEN year BETWEEN 100 AND 9999 AND month BETWEEN 1 AND 12 AND day BETWEEN 1
                     AND CASE WHEN month = 2 THEN CASE WHEN year % 4 = 0 AND (year % 100 <> 0 OR year % 400 = 0)
                                                       THEN 29 ELSE 28 END
                              WHEN month IN (4, 6, 9, 11) THEN 30 ELSE 31 END
                THEN make_date(year, month, day) END
$f$;
CREATE OR REPLACE FUNCTION @.vorlane_date_in(x text) RETURNS timestamp
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $f$
DECLARE
    rest text COLLATE "C" := ltrim(x, E' ,\t');
    token text COLLATE "C";
    part integer[] := '{}'; -- of the date
    long boolean[] := '{}'; -- written with more than two digits
    clock integer[] := '{}';
    after_colon boolean := false;
    month integer;
    half text;
    day date;
BEGIN
    WHILE rest <> '' LOOP
        token := COALESCE(lower(substring(rest from '^(?:[0-9]+|[A-Za-z]+)')), '');
        rest := substr(rest, length(token) + 1);
        IF token ~ '^[0-9]{1,4}$' THEN
            IF after_colon OR rest ~ '^:' THEN
                clock := clock || token::integer;
                after_colon := rest ~ '^:';
                rest := regexp_replace(rest, '^:', '');
            ELSIF clock = '{}' THEN
                part := part || token::integer;
                long := long || (length(token) > 2);
                rest := regexp_replace(rest, '^[/-]', '');
            ELSE
                RETURN NULL;
            END IF;
        ELSIF token IN ('am', 'pm') AND clock <> '{}' THEN
            half := token;
        ELSIF token <> 't' OR part = '{}' THEN
            month := (SELECT number
                      FROM unnest('{january,february,march,april,may,june,july,august,september,october,november,'
                                  'december}'::text[]) WITH ORDINALITY AS months(name, number)
                      WHERE starts_with(name, token) AND length(token) >= 3 AND month IS NULL);
            IF month IS NULL THEN
                RETURN NULL;
            END IF;
            rest := regexp_replace(rest, '^[/-]', '');
        END IF;
        rest := ltrim(rest, E' ,\t');
    END LOOP;
    IF after_colon THEN
        RETURN NULL;
    END IF;
    IF month IS NULL AND part = '{}' AND clock <> '{}' THEN
        day := '1899-12-30';
    ELSIF month IS NOT NULL AND cardinality(part) = 2 THEN
        day := CASE WHEN long[1] THEN @.vorlane_day(part[1], month, part[2])
                    ELSE @.vorlane_day(@.vorlane_year(part[2], long[2]), month, part[1]) END;
    ELSIF month IS NULL AND cardinality(part) = 3 THEN
        day := CASE WHEN long[1] THEN @.vorlane_day(part[1], part[2], part[3])
                    ELSE COALESCE(@.vorlane_day(@.vorlane_year(part[3], long[3]), part[1], part[2]),
                                  @.vorlane_day(@.vorlane_year(part[3], long[3]), part[2], part[1])) END;
    END IF;
    IF clock = '{}' THEN
        RETURN day;
    END IF;
    IF half IS NOT NULL THEN
        clock[1] := CASE WHEN clock[1] NOT BETWEEN 1 AND 12 THEN 24
                         ELSE clock[1] % 12 + CASE half WHEN 'pm' THEN 12 ELSE 0 END END;
    END IF;
    IF cardinality(clock) NOT IN (2, 3) OR clock[1] > 23 OR clock[2] > 59 OR clock[3] > 59 THEN
        RETURN NULL;
    END IF;
    RETURN day + make_time(clock[1], clock[2], COALESCE(clock[3], 0));
END $f$;
CREATE OR REPLACE FUNCTION @.vorlane_date(x text) RETURNS timestamp
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $f$
DECLARE
    found timestamp := @.vorlane_date_in(x);
BEGIN
    IF found IS NULL THEN
        RAISE EXCEPTION 'no date: %', left(x, 100) USING ERRCODE = '22007';
    END IF;
    RETURN found;
END $f$;
)sql";

// The first runs as owner: who inserts has no right to the counter itself.
constexpr char triggers[] = R"sql(
CREATE OR REPLACE FUNCTION @.vorlane_raise_counter() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, pg_temp AS $f$
DECLARE
    sequence text := pg_get_serial_sequence(format('%I.%I', TG_TABLE_SCHEMA, TG_TABLE_NAME), TG_ARGV[0]);
    highest bigint;
BEGIN
    EXECUTE format('SELECT max(%I) FROM added', TG_ARGV[0]) INTO highest;
    EXECUTE format('SELECT setval(%L, $1) FROM %s WHERE last_value < $1 OR (last_value = $1 AND NOT is_called)',
                   sequence, sequence) USING highest;
    RETURN NULL;
END $f$;
CREATE OR REPLACE FUNCTION @.vorlane_changed() RETURNS trigger LANGUAGE plpgsql AS $f$
BEGIN
    IF EXISTS (SELECT FROM changed) THEN
        PERFORM pg_notify('vorlane_' || quote_ident(TG_TABLE_SCHEMA)::regnamespace::oid, TG_TABLE_NAME);
    END IF;
    RETURN NULL;
END $f$;
)sql";

const QString matchesNothing = QStringLiteral("$.");

/// What stands for the list of a pattern that has `signs` in its brackets.
QString list(const QList<uint> &signs)
{
    const bool negated = signs.size() > 1 && signs[0] == '!';
    QString ranges;
    for (qsizetype at = negated ? 1 : 0; at < signs.size();) {
        const bool isRange = at + 2 < signs.size() && signs[at + 1] == '-';
        const char32_t first = signs[at], last = signs[isRange ? at + 2 : at];
        if (first <= last)
            ranges += range(first, last);
        at += isRange ? 3 : 1;
    }
    if (signs.isEmpty())
        return {};
    if (ranges.isEmpty())
        return negated ? QStringLiteral(".") : matchesNothing;
    return QLatin1String(negated ? "[^" : "[") + ranges + u']';
}

}

QString ServerFunctions::creation()
{
    const QString blanks =
        u'[' + characters(0x10000, [](char32_t c) { return QChar::isSpace(c); }) + QLatin1String("]*");
    const QString number = QStringLiteral("(?:[0-9][0-9,]*\\.?[0-9]*|\\.[0-9]+)(?:[eE][-+]?0*[0-9]{1,3})?");
    QString functions = wide("vorlane_wide_fold", QStringLiteral("r text COLLATE \"C\" := lower(x COLLATE \"C\")"),
                             mapping([](char32_t c) { return QChar::toCaseFolded(c); }), "r");
    functions += wide("vorlane_wide_ucase", QStringLiteral("r text COLLATE \"C\" := upper(x COLLATE \"C\")"),
                      mapping([](char32_t c) { return QChar::toUpper(c); }), "r");
    functions += wide("vorlane_wide_key",
                      QStringLiteral("f text COLLATE \"C\" := @.vorlane_fold(x); r text COLLATE \"C\" := "
                                     "replace(replace(f, chr(2), chr(2) || chr(2)), chr(1), chr(2) || chr(1))"),
                      mapping(baseLetter) + keyOfBaseLetters(),
                      "CASE WHEN octet_length(f) = char_length(f) THEN r ELSE r || chr(1) || f END");
    functions += QLatin1String(texts) + QLatin1String(numbers).toString().replace(u'#', number).replace(u'&', blanks)
        + QLatin1String(dates) + QLatin1String(triggers);
    functions += QStringLiteral("CREATE OR REPLACE FUNCTION @.vorlane_version() RETURNS integer LANGUAGE sql IMMUTABLE "
                                "PARALLEL SAFE AS 'SELECT %1';\n")
                     .arg(version);
    return QString::fromLatin1(domains).arg(functions);
}

QString ServerFunctions::regularExpression(const QString &pattern)
{
    const QList<uint> signs = foldCase(pattern).toUcs4();
    QString expression = QStringLiteral("^");
    for (qsizetype at = 0; at < signs.size(); ++at) {
        switch (signs[at]) {
        case '*':
            expression += QLatin1String(".*");
            break;
        case '?':
            expression += u'.';
            break;
        case '#':
            expression += QLatin1String("[0-9]");
            break;
        case '[': {
            const qsizetype stop = signs.indexOf(']', at);
            if (stop < 0)
                return matchesNothing;
            expression += list(signs.sliced(at + 1, stop - at - 1));
            at = stop;
            break;
        }
        default:
            expression += code(signs[at]);
        }
    }
    return expression + u'$';
}
