// The chapters of the show, by the frame that each begins with.
export const FRAMES_A_SECOND = 60;

export const CHAPTERS = [
  { frame: 0, name: 'Logo' },
  { frame: 1000, name: 'Fly-in' },
  { frame: 1600, name: 'Sun' },
  { frame: 5860, name: 'First wheel' },
  { frame: 9460, name: 'Second wheel' },
  { frame: 13060, name: 'Third wheel' },
  { frame: 17800, name: 'Zoom' },
  { frame: 17950, name: 'Close' },
];

export function chapterAt(frame) {
  return CHAPTERS.findLast((chapter) => chapter.frame <= frame) ?? CHAPTERS[0];
}

// "2:05"
export function timeText(frame) {
  const seconds = Math.floor(frame / FRAMES_A_SECOND);
  return `${Math.floor(seconds / 60)}:${String(seconds % 60).padStart(2, '0')}`;
}
