% The function under Octave against identities and against itself by other pairs; the directory of tessarel.mex is the
% first argument.
addpath(argv(){1});
names = {'methane', 'ethane', 'propane'};
z = [0.85 0.10 0.05];

[p, t] = meshgrid([5e5 20e5 60e5], [200 250 300]);
grid = tessarel('state', names, z, 'TP', t, p);
assert(size(grid.h), [3 3]);
assert(all(cellfun(@isempty, grid.message)));
assert(grid.h, grid.u + p .* grid.v, 1e-9 * max(abs(grid.h(:))));
two = grid.q > 0 & grid.q < 1;
assert(any(two(:)) && all(isnan(grid.cp(two))) && all(grid.cp(!two) > 8.31441));
assert(grid.q(:)' .* grid.y + (1 - grid.q(:)') .* grid.x, repmat(z', 1, 9), 1e-12);

back = tessarel('state', names, z, 'Ph', p, grid.h);
assert(back.T, t, 1e-7);
one = tessarel('state', names, z, 'TP', t(2, 3), p(2, 3));
assert(one.h == grid.h(2, 3) && isequal(one.cp, grid.cp(2, 3)));

% cp by a difference of h, a saturated state, a critical point on the envelope's scale
step = tessarel('state', 'propane', 1, 'TP', 350 + [-0.01 0.01], 5e5);
assert(tessarel('state', 'propane', 1, 'TP', 350, 5e5).cp, diff(step.h) / 0.02, 1e-6);
assert(tessarel('state', 'propane', 1, 'Tq', 300, [0 1]).P(1), 998670, 1);
line = tessarel('envelope', names, z);
critical = tessarel('critical', names, z);
assert(min(hypot(line.T / critical.T - 1, line.P / critical.P - 1)) < 0.02);
assert(sum(line.x), ones(1, numel(line.T)), 1e-12);

mixed = tessarel('state', 'propane', 1, 'TP', [300 -1], 1e5);
assert(isnan(mixed.h(2)) && !isempty(mixed.message{2}) && isempty(mixed.message{1}));
function refused(varargin)
  try
    tessarel(varargin{:});
  catch problem
    assert(!isempty(problem.message));
    return
  end_try_catch
  error('accepted: %s', disp(varargin));
end
refused();
refused('state', 'unobtainium', 1, 'TP', 300, 1e5);
refused('state', names, [0.5 0.5], 'TP', 300, 1e5);
refused('state', names, [85 10 5], 'TP', 300, 1e5);
refused('state', 'propane', 1, 'TP', -1, 1e5);
refused('state', 'propane', 1, 'XY', 300, 1e5);
refused('state', 'propane', 1, 'TP', [300 301], [1e5 2e5 3e5]);
refused('state', 'propane', 1, 'TP', [], 1e5);
refused('state', {1, 2}, [0.5 0.5], 'TP', 300, 1e5);
refused('state', 'propane', {1}, 'TP', 300, 1e5);
refused('state', 'propane', 1, 'TP', 'x', 1e5);
refused('envelope', 'propane', 1);
disp('octave: all assertions hold');
