% TESSAREL  Thermodynamic properties of fluids and mixtures (PC-SAFT). Molar SI units throughout.
%
%   s = tessarel('state', fluids, z, pair, a, b)
%       States from two properties. fluids is a name or a cell array of names, z their mole fractions, pair one of
%       'TP' 'Tv' 'vP' 'Ts' 'vu' 'vh' 'vs' 'Pu' 'Ph' 'Ps' 'hs' 'Pq' 'Tq' 'vq', also with 'Lph' or 'Vph' behind it for
%       one liquid or vapour phase; a and b the values [K, Pa, m3/mol, J/mol, J/(mol K)], numbers or arrays of one shape.
%       s has the fields T P v u h s q, of one phase cv cp w jt kappa alpha g (else NaN), x and y (a column for each
%       state: mole fractions of liquid and vapour) and message, a cell array of texts, empty for states found.
%       One state that does not exist is an error; of several it is NaN with its message.
%   c = tessarel('critical', fluids, z)   fields T, P, rho [mol/m3]
%   e = tessarel('envelope', fluids, z)   fields T, P and the phases x, y at the points of the boundary
%
%   w  speed of sound [m/s]; jt Joule-Thomson coefficient [K/Pa]; kappa isothermal compressibility [1/Pa]; alpha
%   thermal expansion [1/K]; g Gibbs energy [J/mol]. h, u and s count from the ideal gas at 298.15 K and 1e5 Pa.
%
%   gas = tessarel('state', {'methane', 'ethane'}, [0.9 0.1], 'TP', 220, 30e5);
%
% This text belongs to tessarel.mex, built with mkoctfile or mex from tessarel.c beside it.
