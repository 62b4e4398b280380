"""Tests of the generators' small steps.

Command line:
    python3 -m unittest discover -s tools/generate -p "*_test.py"
"""

import math
import unittest

import airports
import demo_weather
import station_tables
import upper_air
import wxstations


def level(**values):
    fields = {"pressure": 500, "height": 5500.0, "temperature": -10.0, "humidity": 50.0, "direction": 270.0,
              "speed": 20.0}
    return upper_air.Level(**(fields | values))


class UpperAirTest(unittest.TestCase):
    def test_temperature_parity_tells_the_sign(self):
        for celsius, digits in ((12.4, "124"), (-12.5, "125"), (-12.36, "123"), (0.0, "000"), (-0.04, "000"),
                                (-0.06, "001"), (-70.26, "703"), (0.11, "002")):
            self.assertEqual(upper_air.temperature_digits(celsius), digits, celsius)
            read = upper_air.read_temperature(upper_air.temperature_digits(celsius) + "00")[0]
            self.assertLessEqual(abs(read - celsius), 0.1501, celsius)

    def test_depression_changes_unit_above_five_degrees(self):
        for kelvin, digits in ((0.0, "00"), (0.8, "08"), (5.0, "50"), (5.2, "55"), (5.6, "56"), (49.4, "99"), (80.0, "99")):
            self.assertEqual(upper_air.depression_digits(kelvin), digits)

    def test_fast_winds_move_a_hundred_knots_into_the_direction(self):
        for direction, speed, group in ((15.0, 110.0, "37510"), (270.0, 20.0, "27020"), (0.0, 20.0, "36020"),
                                        (359.7, 99.4, "36099"), (0.2, 100.0, "72000"), (90.0, 199.4, "45099"),
                                        (90.0, 200.0, "090200"), (123.0, 0.3, "00000")):
            self.assertEqual(upper_air.wind_group(level(direction=direction, speed=speed)), group)

    def test_level_codes(self):
        codes = {pressure: upper_air.level_code(pressure) for pressure in (1000, 975, 925, 850, 100, 70, 10)}
        self.assertEqual(codes, {1000: "00", 975: None, 925: "92", 850: "85", 100: "10", 70: "07", 10: "01"})

    def test_quadrants(self):
        places = ((40, 20), (-40, 20), (-40, -20), (40, -20))
        self.assertEqual([upper_air.quadrant(*place) for place in places], [1, 3, 5, 7])

    def test_dew_point_of_saturated_and_of_dry_air(self):
        self.assertAlmostEqual(upper_air.dew_point(15.0, 100.0), 15.0, places=6)
        self.assertAlmostEqual(upper_air.dew_point(20.0, 50.0), 9.3, delta=0.1)
        self.assertTrue(math.isfinite(upper_air.dew_point(-80.0, 0.0)))

    def test_tropopause_needs_two_kilometres(self):
        # A thin inversion at 450 hPa is none, the isothermal air above 250 hPa is.
        profile = [level(pressure=500, height=5500, temperature=-15), level(pressure=450, height=6300, temperature=-20),
                   level(pressure=400, height=7200, temperature=-20), level(pressure=350, height=8100, temperature=-32),
                   level(pressure=300, height=9100, temperature=-45), level(pressure=250, height=10300, temperature=-55),
                   level(pressure=200, height=11800, temperature=-55), level(pressure=150, height=13600, temperature=-56)]
        self.assertEqual(upper_air.tropopause(profile).pressure, 250)


class StationsTest(unittest.TestCase):
    def test_angles_carry_into_degrees(self):
        self.assertEqual(wxstations.angle_text(70.9333, 2, "NS"), "7056N")
        self.assertEqual(wxstations.angle_text(-8.9999, 3, "EW"), "00900W")

    def test_row_has_fixed_columns(self):
        place = station_tables.Place("ENJA", "01001", "Jan Mayen (Norwegian Navy)", "NO", 70.933, -8.667, -12.0, "")
        self.assertEqual(wxstations.row_text(place), "010010 ENJA   JAN MAYEN (NORWEGIANNO 7056N 00840W -012   ")

    def test_airport_row(self):
        place = station_tables.Place("00C", "", "Animas;\t Durango", "US", 37.2032, -107.869, None, "")
        row = airports.row_text(place, {"US": "United States"})
        self.assertEqual(row, "00C ;Animas, Durango;United States;0;37.2032000;-107.869000000;1;1;1;1;1")

    def test_unknown_elevations(self):
        values = [station_tables.elevation_of(text) for text in ("-0999.0", "9999", "", None, "+0009.0", "-0012.0")]
        self.assertEqual(values, [None, None, None, None, 9.0, -12.0])


class DemoTest(unittest.TestCase):
    def test_hours_fall_between_six_and_noon(self):
        self.assertEqual([demo_weather.demo_hour(hour) for hour in (0, 3, 6, 9, 12, 15, 18, 23)],
                         [12, 9, 6, 9, 12, 9, 6, 11])

    def test_synops_keep_all_but_day_and_hour(self):
        rows = {"AAXX 17181 15020 02997 01503 10071": "AAXX 01061 15020 02997 01503 10071",
                "BBXX KRIH 05034 99463 70374 41/98 42824 10120": "BBXX KRIH 01094 99463 70374 41/98 42824 10120",
                "AAXX 03093 64454 NIL": None}
        for report, moved in rows.items():
            self.assertEqual(demo_weather.move_synop(report), moved)

    def test_tafs_move_by_whole_days(self):
        self.assertEqual(demo_weather.move_taf("TAF KMSN 141125Z 1412/1518 TX07/1416Z 25014KT FM150100 VRB03KT"),
                         "TAF KMSN 011125Z 0112/0218 TX07/0116Z 25014KT FM020100 VRB03KT")
        self.assertEqual(demo_weather.move_taf("TAF EDDT 121700Z 1218/1318 VRB03KT CAVOK"),
                         "TAF EDDT 301700Z 3018/0118 VRB03KT CAVOK")
        self.assertIsNone(demo_weather.move_taf("TAF AMD KMSN 141125Z 1412/1518 25014KT"))


if __name__ == "__main__":
    unittest.main()
