// Turns points of a grid (x y z on standard input, metres above mean sea level) into soundings as a vessel takes them: each at a
// time of its own, measured from the water's level, which the tide predicted for that time moves. Writes FOLDER/soundings.xyz and, for
// `zel tide import`, FOLDER/tide.txt.
//
// Usage: node soundings.mjs STATION FOLDER < points
import fs from 'node:fs';
import path from 'node:path';
import { createTidePredictor } from '@neaps/tide-predictor';
import { stations } from '@neaps/tide-database';

const [stationName, folder] = process.argv.slice(2);
const station = stations.find((s) => s.name === stationName && s.harmonic_constituents?.length > 20);
if (!station) throw new Error(`no tide station "${stationName}" with constituents`);
const predictor = createTidePredictor(station.harmonic_constituents);

const start = Date.UTC(2026, 4, 10);
const stepMs = 10 * 60 * 1000;
const end = start + 48 * 3600 * 1000;
const tide = predictor
  .getTimelinePrediction({ start: new Date(start), end: new Date(end), timeFidelity: stepMs / 1000 })
  .map(({ time, level }) => ({ time: time.getTime(), level: Number(level.toFixed(3)) }));

const stamp = (time) => new Date(time).toISOString().slice(0, 16).replace('T', ' ');
fs.writeFileSync(
  path.join(folder, 'tide.txt'),
  `# Predicted for ${station.name} (${station.latitude.toFixed(4)}, ${station.longitude.toFixed(4)}), metres above mean sea level, UTC.\n` +
    tide.map(({ time, level }) => `${stamp(time)} ${level.toFixed(3)}\n`).join(''),
);

// Straight between two values, as the survey's reduction is.
function levelAt(time) {
  const i = Math.min(Math.floor((time - start) / stepMs), tide.length - 2);
  const share = (time - tide[i].time) / stepMs;
  return tide[i].level + share * (tide[i + 1].level - tide[i].level);
}

const points = fs.readFileSync(0, 'latin1').split('\n').filter((line) => line.trim()).map((line) => line.trim().split(/\s+/).map(Number));
const spacing = (end - start) / (points.length + 1);
const lines = points.map(([x, y, z], i) => {
  const time = Math.round(start + (i + 1) * spacing);
  return `${x.toFixed(1)} ${y.toFixed(1)} ${(z - levelAt(time)).toFixed(2)} ${time}\n`;
});
fs.writeFileSync(path.join(folder, 'soundings.xyz'), '# x y z time: metres in the grid, z up from the water\'s level, milliseconds since 1970 (UTC)\n' + lines.join(''));
