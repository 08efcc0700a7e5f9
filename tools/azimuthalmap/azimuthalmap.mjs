// Draws an azimuthal equidistant world map as a PNG: from the station in the middle every bearing and every
// distance is true. North is at the top, bearings grow clockwise, the antipode is the rim of the disc.

import { readFileSync, realpathSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { fileURLToPath } from 'node:url';
import { parseArgs } from 'node:util';

import { Resvg } from '@resvg/resvg-js';
import { geoAzimuthalEquidistant, geoGraticule, geoPath } from 'd3-geo';
import { PNG } from 'pngjs';
import { feature } from 'topojson-client';

const require = createRequire(import.meta.url);

const EARTH_RADIUS_KM = 6371;
const HALF_CIRCUMFERENCE_KM = Math.PI * EARTH_RADIUS_KM;
const RING_STEP_KM = 2500;
const OUTERMOST_RING_KM = 17500; // the next would lie on the rim
const LABELLED_RING_STEP_KM = 5000;
const RING_LABEL_BEARING = 50; // clear of the compass labels, which stand at every 30 degrees
const SPOKE_STEP = 30;
const GRATICULE_STEP = 15;

// Middle tones: the program draws both coloured arrows and a black and dark blue compass over the map.
const COLOUR = {
  sea: '#7d9db5',
  land: '#b3b193',
  coast: '#4c5c60',
  graticule: '#5f7f98',
  bearing: '#e8eef2',
  rim: '#3d5163',
  label: '#ffffff',
  halo: '#44596b',
};

// Line widths and letter heights as parts of the image's width: the picture looks alike at every size.
const RATIO = {
  hairline: 0.0007,
  coast: 0.001,
  ring: 0.0014,
  rim: 0.005,
  label: 0.0165,
  halo: 0.004,
  stationLabelY: 0.545, // below the white hub that the program paints in the middle
};

const USAGE = `Usage: node azimuthalmap.mjs (--lat DEGREES --lon DEGREES | --locator LOCATOR) [options]

  --lat DEGREES      latitude of the station, -90 to 90, south is negative
  --lon DEGREES      longitude of the station, -180 to 180, west is negative
  --locator LOCATOR  the station as a Maidenhead locator of 4, 6 or 8 characters, such as GG66rp
  --size PIXELS      width and height of the picture, 200 to 8000 (1600)
  --label TEXT       text under the centre (the position; "" for none)
  --out FILE         the PNG to write (AzimuthalMap.png)`;

class UsageError extends Error {}

function parseNumber(name, text, low, high) {
  const value = Number(text);
  if (!/^[+-]?(\d+\.?\d*|\.\d+)$/.test(text) || value < low || value > high)
    throw new UsageError(`--${name} must be a number from ${low} to ${high} (with a decimal point), not "${text}"`);
  return value;
}

function parseSize(text) {
  const size = parseNumber('size', text, 200, 8000);
  if (!Number.isInteger(size))
    throw new UsageError(`--size must be a whole number of pixels, not "${text}"`);
  return size;
}

// The middle of the square that a Maidenhead locator names, as { lat, lon } in degrees.
export function locatorToPosition(locator) {
  if (!/^[A-R]{2}\d{2}([A-X]{2}(\d{2})?)?$/i.test(locator))
    throw new UsageError(`--locator must look like GG66, GG66rp or GG66rp25, not "${locator}"`);
  const digits = [...locator.toUpperCase()].map((c) => (c >= 'A' ? c.charCodeAt(0) - 65 : Number(c)));
  const steps = [10, 1, 1 / 24, 1 / 240]; // of latitude; longitude takes twice as much
  let lat = -90;
  let lon = -180;
  let step = 0;
  for (let i = 0; i < digits.length / 2; i++) {
    step = steps[i];
    lon += digits[2 * i] * step * 2;
    lat += digits[2 * i + 1] * step;
  }
  return { lat: lat + step / 2, lon: lon + step };
}

// Lets a negative number follow its option after a blank, which parseArgs takes for another option.
function joinNegativeNumbers(args) {
  const joined = [];
  for (const arg of args) {
    if (/^-[\d.]/.test(arg) && /^--[a-z]+$/.test(joined.at(-1) ?? ''))
      joined.push(`${joined.pop()}=${arg}`);
    else
      joined.push(arg);
  }
  return joined;
}

function readArguments(args) {
  const names = ['lat', 'lon', 'locator', 'size', 'label', 'out'];
  const options = Object.fromEntries(names.map((name) => [name, { type: 'string' }]));
  try {
    return parseArgs({ args: joinNegativeNumbers(args), options: { ...options, help: { type: 'boolean' } } }).values;
  } catch (error) {
    throw new UsageError(error.message);
  }
}

function stationOf({ lat, lon, locator }) {
  const hasPosition = lat !== undefined && lon !== undefined;
  const hasPartOfPosition = lat !== undefined || lon !== undefined;
  if (locator !== undefined && !hasPartOfPosition)
    return { ...locatorToPosition(locator), name: locator };
  if (locator === undefined && hasPosition) {
    const station = { lat: parseNumber('lat', lat, -90, 90), lon: parseNumber('lon', lon, -180, 180) };
    return { ...station, name: positionName(station) };
  }
  throw new UsageError('give either --lat and --lon, or --locator');
}

function positionName({ lat, lon }) {
  return `${Math.abs(lat)}° ${lat < 0 ? 'S' : 'N'} ${Math.abs(lon)}° ${lon < 0 ? 'W' : 'E'}`;
}

// Turns the command line into { lat, lon, size, label, out }, or { help: true }; throws UsageError.
function parseCommandLine(args) {
  const values = readArguments(args);
  if (values.help)
    return { help: true };
  const { name, ...position } = stationOf(values);
  const size = parseSize(values.size ?? '1600');
  if (values.out === '')
    throw new UsageError('--out needs the name of a file');
  return { ...position, size, label: values.label ?? name, out: values.out ?? 'AzimuthalMap.png' };
}

function discRadius(size) {
  return (size * (1 - RATIO.rim)) / 2;
}

// Projects [longitude, latitude] in degrees to [x, y] in pixels of a picture of that size.
export function stationProjection({ lat, lon }, size) {
  return geoAzimuthalEquidistant()
    .rotate([-lon, -lat])
    .scale(discRadius(size) / Math.PI)
    .translate([size / 2, size / 2])
    .precision(0.2);
}

// The pixel at a compass bearing (degrees) and a distance (km) from the station.
export function pointAt(bearing, km, size) {
  const angle = (bearing * Math.PI) / 180;
  const r = (discRadius(size) * km) / HALF_CIRCUMFERENCE_KM;
  return [size / 2 + r * Math.sin(angle), size / 2 - r * Math.cos(angle)];
}

function loadLand() {
  const topology = JSON.parse(readFileSync(require.resolve('world-atlas/land-50m.json'), 'utf8'));
  return feature(topology, topology.objects.land);
}

function range(start, end, step) {
  const values = [];
  for (let value = start; value < end; value += step)
    values.push(value);
  return values;
}

function drawGeography(position, size) {
  const path = geoPath(stationProjection(position, size)).digits(1);
  const graticule = geoGraticule().step([GRATICULE_STEP, GRATICULE_STEP])();
  return `
    <path d="${path(loadLand())}" fill="${COLOUR.land}" stroke="${COLOUR.coast}"
          stroke-width="${size * RATIO.coast}" stroke-linejoin="round"/>
    <path d="${path(graticule)}" fill="none" stroke="${COLOUR.graticule}" stroke-width="${size * RATIO.hairline}"/>`;
}

function drawRing(km, size) {
  const labelled = km % LABELLED_RING_STEP_KM === 0;
  return `<circle cx="${size / 2}" cy="${size / 2}" r="${size / 2 - pointAt(0, km, size)[1]}"
    stroke-width="${size * RATIO.ring}" ${labelled ? '' : `stroke-dasharray="${size * 0.002} ${size * 0.006}"`}/>`;
}

function drawSpoke(bearing, size) {
  const [x1, y1] = pointAt(bearing, RING_STEP_KM, size);
  const [x2, y2] = pointAt(bearing, HALF_CIRCUMFERENCE_KM, size);
  return `<line x1="${x1}" y1="${y1}" x2="${x2}" y2="${y2}" stroke-width="${size * RATIO.hairline}"/>`;
}

function drawBearings(size) {
  const rings = range(RING_STEP_KM, OUTERMOST_RING_KM + 1, RING_STEP_KM).map((km) => drawRing(km, size));
  const spokes = range(0, 360, SPOKE_STEP).map((bearing) => drawSpoke(bearing, size));
  return `<g fill="none" stroke="${COLOUR.bearing}" stroke-opacity="0.6">${rings.join('')}${spokes.join('')}</g>`;
}

function escapeXml(text) {
  return text.replace(/[<>&"']/g, (c) => `&#${c.charCodeAt(0)};`);
}

function drawText(text, [x, y], anchor, size) {
  const baseline = y + size * RATIO.label * 0.36; // half the height of a digit below the point
  return `<text x="${x}" y="${baseline}" text-anchor="${anchor}">${escapeXml(text)}</text>`;
}

function drawLabels(label, size) {
  const rings = range(LABELLED_RING_STEP_KM, OUTERMOST_RING_KM + 1, LABELLED_RING_STEP_KM);
  const texts = rings.map((km) => drawText(`${km} km`, pointAt(RING_LABEL_BEARING, km, size), 'end', size));
  texts.push(drawText(label, [size / 2, size * RATIO.stationLabelY], 'middle', size));
  return `<g font-family="DejaVu Sans" font-weight="bold" font-size="${size * RATIO.label}"
    fill="${COLOUR.label}" stroke="${COLOUR.halo}" stroke-width="${size * RATIO.halo}" stroke-linejoin="round"
    paint-order="stroke">${texts.join('')}</g>`;
}

export function drawSvg({ lat, lon, size, label }) {
  const middle = `cx="${size / 2}" cy="${size / 2}" r="${discRadius(size)}"`;
  return `<svg xmlns="http://www.w3.org/2000/svg" width="${size}" height="${size}">
    <circle ${middle} fill="${COLOUR.sea}"/>
    ${drawGeography({ lat, lon }, size)}
    ${drawBearings(size)}
    <circle ${middle} fill="none" stroke="${COLOUR.rim}" stroke-width="${size * RATIO.rim}"/>
    ${drawLabels(label, size)}
  </svg>`;
}

// Areas of one colour pack better unfiltered: the file is a third smaller than the renderer's own.
function repack(png) {
  return PNG.sync.write(PNG.sync.read(png), { filterType: 0, deflateLevel: 9, deflateStrategy: 0 });
}

export function renderPng(svg) {
  const fontFiles = [require.resolve('dejavu-fonts-ttf/ttf/DejaVuSans-Bold.ttf')];
  return repack(new Resvg(svg, { font: { fontFiles, loadSystemFonts: false } }).render().asPng());
}

function main(args) {
  try {
    const request = parseCommandLine(args);
    if (request.help)
      console.log(USAGE);
    else
      writeFileSync(request.out, renderPng(drawSvg(request)));
  } catch (error) {
    console.error(error instanceof UsageError ? `${error.message}\n\n${USAGE}` : error.message);
    process.exitCode = error instanceof UsageError ? 2 : 1;
  }
}

if (process.argv[1] && realpathSync(process.argv[1]) === fileURLToPath(import.meta.url))
  main(process.argv.slice(2));
