"""Singles, and the shortest decimal that reads back as the same number."""

import functools
import math
import struct
from fractions import Fraction

_FLOAT = struct.Struct("<f")


def single(value):
    """value rounded to the nearest IEEE single, widened back to a double."""
    return _FLOAT.unpack(_FLOAT.pack(value))[0]


def single_bits(value):
    return struct.unpack("<I", _FLOAT.pack(value))[0]


def _neighbours(value):
    """The singles below and above a positive single."""
    bits = single_bits(value)
    below = struct.unpack("<f", struct.pack("<I", bits - 1))[0]
    if bits + 1 >= 0x7F800000:
        return below, 2 * value - below
    return below, struct.unpack("<f", struct.pack("<I", bits + 1))[0]


def _reads_as_single(text, value):
    """Whether the decimal text reads as the positive single value, rounded once."""
    exact = Fraction(text)
    below, above = _neighbours(value)
    low = (Fraction(below) + Fraction(value)) / 2
    high = (Fraction(above) + Fraction(value)) / 2
    even = single_bits(value) % 2 == 0
    return low <= exact <= high if even else low < exact < high


def parse_single(text):
    """The single that a decimal text reads as, rounded once and not twice."""
    through_double = float(text)
    try:
        guess = single(through_double)
    except OverflowError:
        return float("inf") if through_double > 0 else float("-inf")
    if guess == 0 or guess == through_double or guess in (float("inf"), float("-inf")):
        return guess
    # Rounding twice can only go wrong where the double is a tie of two singles.
    if struct.unpack("<Q", struct.pack("<d", through_double))[0] & 0x1FFFFFFF not in (0, 0x10000000):
        return guess
    sign = -1.0 if guess < 0 else 1.0
    plain = text.lstrip("+-")
    for candidate in (abs(guess),) + _neighbours(abs(guess)):
        if candidate > 0 and _reads_as_single(plain, candidate):
            return sign * candidate
    return guess


def digits_of(text):
    """A decimal text as (sign, digits without outer zeros, exponent of the first digit)."""
    sign = "-" if text.startswith("-") else ""
    mantissa, _, exponent = text.lstrip("+-").lower().partition("e")
    whole, _, fraction = mantissa.partition(".")
    power = int(exponent or 0) + len(whole) - 1
    digits = whole + fraction
    stripped = digits.lstrip("0")
    power -= len(digits) - len(stripped)
    stripped = stripped.rstrip("0")
    return (sign, stripped, power) if stripped else (sign, "0", 0)


def _ring(value, digits):
    """The decimals of that many digits on both sides of a positive value, the nearer first."""
    nearest = "%.*e" % (digits - 1, value)
    mantissa, exponent = nearest.split("e")
    number = int(mantissa.replace(".", ""))
    step = 1 if Fraction(nearest) < Fraction(value) else -1
    return nearest, "%de%d" % (number + step, int(exponent) - digits + 1)


@functools.lru_cache(maxsize=1 << 18)
def shortest_single(value):
    """Sign, digits and exponent of the shortest decimal that reads as the single."""
    return _shortest(value, 9, lambda text, plain: parse_single(text) == plain)


@functools.lru_cache(maxsize=1 << 18)
def shortest_double(value):
    return _shortest(value, 17, lambda text, plain: float(text) == plain)


def _shortest(value, most, reads_back):
    sign = "-" if str(value).startswith("-") else ""
    plain = abs(value)
    if plain == 0:
        return sign, "0", 0
    for digits in range(1, most + 1):
        nearest = "%.*e" % (digits - 1, plain)
        if reads_back(nearest, plain):
            return (sign,) + digits_of(nearest)[1:]
        # Below a power of two the gap is half as wide, so the decimal on the
        # other side may still read back where the nearest one does not.
        if plain == 2.0 ** round(math.log2(plain)):
            other = _ring(plain, digits)[1]
            if reads_back(other, plain):
                return (sign,) + digits_of(other)[1:]
    raise AssertionError("no decimal of %d digits reads back as %r" % (most, value))


def write_shortest(shape):
    """A (sign, digits, exponent) as plain text, fixed or scientific, the shorter."""
    sign, digits, power = shape
    scientific = sign + digits[0] + ("." + digits[1:] if digits[1:] else "") + "e%+03d" % power
    if power < 0:
        fixed = sign + "0." + "0" * (-power - 1) + digits
    elif len(digits) <= power + 1:
        fixed = sign + digits + "0" * (power + 1 - len(digits))
    else:
        fixed = sign + digits[:power + 1] + "." + digits[power + 1:]
    return fixed if len(fixed) <= len(scientific) else scientific
