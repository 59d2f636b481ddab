// Every key of lwoview, in words: what buttons and help are made of.
//   on(state): whether its button is pressed; absent: it is none that stays pressed.
//   when(state): whether there is anything to do; absent: always.
//   note(state): what to say below a group.

const hasLevels = (state) => state.levels > 1;
const hasLayers = (state) => state.layers.length > 1;

export const GROUPS = [
  {
    title: 'How it is drawn',
    controls: [
      { key: 'l', name: 'Lighting', on: (state) => state.lighting },
      { key: 'n', name: 'Normals', on: (state) => state.normals },
      { key: 'c', name: 'Cel shading', on: (state) => state.celShading },
      { key: 'i', name: 'Surface colours', on: (state) => state.surfaceColors },
      { key: 'f', name: 'Flat', on: (state) => state.shade === 'flat' },
      { key: 's', name: 'Smooth', on: (state) => state.shade === 'smooth' },
      { key: 'm', name: 'Mirror', on: (state) => state.mirrored },
    ],
  },
  {
    title: 'Levels of detail',
    when: hasLevels,
    note: (state) => `Shown now: level ${state.level} of ${state.levels}, 0 being the finest.`,
    controls: [
      { key: 'd', name: 'Nearer together' },
      { key: 'D', name: 'Farther apart' },
    ],
  },
];

export const SELECTING = [
  { key: 'a', name: 'Select all', on: (state) => state.selection[0] < 0 },
  { key: '[', name: 'Layer before', when: hasLayers },
  { key: ']', name: 'Next layer', when: hasLayers },
  { key: '\t', name: 'Next surface' },
];

export const SELECTED = [
  { key: 'h', name: 'Hide or show' },
  { key: 't', name: 'Textures' },
  { key: 'r', name: 'Recolour' },
  { key: 'b', name: 'Paint corners' },
  { key: 'u', name: 'Own colours again' },
  { key: 'p', name: 'Describe' },
  { key: 'k', name: 'Corner colours' },
];

export const ALL = [...GROUPS.flatMap((group) => group.controls), ...SELECTING, ...SELECTED];
export const inWords = ({ key, name }) => (key.toLowerCase() === 'd' ? `Levels of detail ${name.toLowerCase()}` : name);

// Tab leads on through the page, as everywhere; its button does what it does in lwoview.
export const isKey = (key) => key !== '\t' && (ALL.some((control) => control.key === key) || '+-0'.includes(key));
