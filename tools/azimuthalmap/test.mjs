import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';

import { PNG } from 'pngjs';

import { drawSvg, locatorToPosition, pointAt, renderPng, stationProjection } from './azimuthalmap.mjs';

const tool = fileURLToPath(new URL('azimuthalmap.mjs', import.meta.url));
const run = (...args) => spawnSync(process.execPath, [tool, ...args], { encoding: 'utf8', cwd: tmpdir() });

function near(actual, expected, tolerance, message) {
  actual.forEach((value, i) => assert.ok(Math.abs(value - expected[i]) <= tolerance,
    `${message}: [${actual}] is not [${expected}]`));
}

test('a place lies at its bearing and distance from the station', () => {
  const quarter = (Math.PI / 2) * 6371;
  const cases = [ // station, place, bearing, km
    [[0, 0], [0, 90], 90, quarter],
    [[0, 0], [0, -90], 270, quarter],
    [[0, 0], [-45, 0], 180, quarter / 2],
    [[-23.5, -46.6], [90, 0], 0, quarter * (113.5 / 90)],
    [[51.5, -0.13], [40.71, -74.01], 288.3, 5570],
    [[90, 0], [0, 90], 90, quarter],
  ];
  for (const [[lat, lon], place, bearing, km] of cases) {
    const pixel = stationProjection({ lat, lon }, 1000)([place[1], place[0]]);
    near(pixel, pointAt(bearing, km, 1000), 0.5, `from ${lat} ${lon} to ${place}`);
  }
  near(pointAt(90, quarter, 1000), [750, 500], 3, 'a quarter of the world is half the radius');
});

test('land and sea have their colours and the corners are clear', () => {
  const stations = [[0, 0], [25, -63], [-40, -75], [90, 0]]; // the antipode at sea, in Australia, in China, at a pole
  for (const [lat, lon] of stations) {
    const picture = PNG.sync.read(renderPng(drawSvg({ lat, lon, size: 800, label: '' })));
    const pixel = ([x, y]) => [...picture.data.subarray(4 * (Math.round(y) * 800 + Math.round(x))).subarray(0, 4)];
    const at = (place) => pixel(stationProjection({ lat, lon }, 800)([place[1], place[0]]));
    const isGreener = ([r, , b]) => r > b;
    assert.ok(isGreener(at([20, 8])), `the Sahara is land from ${lat} ${lon}`);
    assert.ok(!isGreener(at([-35, -20])), `the South Atlantic is sea from ${lat} ${lon}`);
    assert.equal(pixel([0, 0])[3], 0);
  }
});

test('texts are drawn with the font that comes along', () => {
  const pictureWith = (label) => renderPng(drawSvg({ lat: 0, lon: 0, size: 300, label }));
  assert.notDeepEqual(pictureWith('R&D <1>'), pictureWith(''));
});

test('a locator names the middle of its square', () => {
  const cases = [['GG66', -23.5, -47], ['GG66rp', -23.3542, -46.5417], ['gg66RP', -23.3542, -46.5417],
    ['JN58td25', 48.1479, 11.6042], ['AA00', -89.5, -179], ['RR99xx', 89.9792, 179.9583]];
  for (const [locator, lat, lon] of cases) {
    const position = locatorToPosition(locator);
    near([position.lat, position.lon], [lat, lon], 0.0001, locator);
  }
});

test('bad input is refused with a reason and exit code 2', () => {
  const cases = [
    [[], /--lat and --lon, or --locator/],
    [['--lat', '1'], /--lat and --lon, or --locator/],
    [['--lat', '1', '--lon', '1', '--locator', 'GG66'], /--lat and --lon, or --locator/],
    [['--lat', '-90.1', '--lon', '0'], /--lat must be/],
    [['--lat', '-23,5', '--lon', '0'], /decimal point/],
    [['--lat', '0', '--lon', '180.5'], /--lon must be/],
    [['--lat=', '--lon', '0'], /--lat must be/],
    [['--locator', 'GS66'], /--locator must look like/],
    [['--locator', 'GG6'], /--locator must look like/],
    [['--locator', 'GG66', '--size', '199'], /--size must be/],
    [['--locator', 'GG66', '--size', '800.5'], /whole number/],
    [['--locator', 'GG66', '--colour', 'red'], /--colour/],
  ];
  for (const [args, reason] of cases) {
    const { status, stderr } = run(...args);
    assert.equal(status, 2, args.join(' '));
    assert.match(stderr.split('\n')[0], reason);
  }
});

test('the command writes a square PNG, or says why it could not', (t) => {
  const folder = mkdtempSync(join(tmpdir(), 'azimuthalmap-'));
  t.after(() => rmSync(folder, { recursive: true }));
  const out = join(folder, 'AzimuthalMap.png');
  assert.equal(run('--lat', '-23.5', '--lon', '-46.6', '--size', '400', '--out', out).status, 0);
  const { width, height } = PNG.sync.read(readFileSync(out));
  assert.deepEqual([width, height], [400, 400]);

  const failed = run('--locator', 'GG66', '--size', '200', '--out', join(folder, 'none', 'map.png'));
  assert.equal(failed.status, 1);
  assert.match(failed.stderr, /no such file or directory/);
});
