// The page's clock, against readings made by hand: [now, music, expected].
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { makeClock } from '../../web/page/clock.js';

const sounds = (time) => ({ state: 'sounds', time });
const WAITS = { state: 'waits', time: 0 };
const SILENT = { state: 'silent', time: 0 };

const CASES = {
  'runs by itself in silence': [[11, SILENT, 6], [11.5, SILENT, 6.5]],
  'stands while the music waits': [[11, WAITS, 5], [12, SILENT, 6]],
  'is led slowly where it differs little': [[11, sounds(6.1), 6.005], [11, sounds(6.105), 6.01]],
  'goes to the music where it differs much': [[11, sounds(6.5), 6.5], [12, sounds(7), 7]],
  'does not follow music that was lost': [[11, sounds(0), 6], [12, sounds(90), 7]],
};

for (const [name, readings] of Object.entries(CASES))
  test(`the clock ${name}`, () => {
    const clock = makeClock();
    clock.start(5, 10);
    for (const [now, music, expected] of readings)
      assert.ok(Math.abs(clock.read(now, music) - expected) < 1e-6, `at ${now}`);
    clock.stop();
    assert.equal(clock.read(99, SILENT), clock.read(999, SILENT));
  });

test('the clock knows music that is to be wound', () => {
  const clock = makeClock();
  clock.start(5, 10);
  assert.equal(clock.isLost(sounds(0)), true);
  assert.equal(clock.isLost(sounds(4)), false);
  assert.equal(clock.isLost(WAITS), false);
});
